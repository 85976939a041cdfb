#include "findref/HitListModel.h"

#include "platform/widgets/qt_text.h"

namespace blockhouse {

bool HitListModel::showNew() {
    if (hits_.count() == shown_)
        return false;
    beginInsertRows({}, shown_, hits_.count() - 1);
    shown_ = hits_.count();
    endInsertRows();
    return true;
}

void HitListModel::showNone() {
    beginResetModel();
    shown_ = 0;
    endResetModel();
}

int HitListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

QVariant HitListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == Qt::DisplayRole)
        return displayed(hits_.displayLine(index.row()));
    if (role == Qt::ToolTipRole)
        return displayed(hits_.path(index.row()));
    return {};
}

} // namespace blockhouse
