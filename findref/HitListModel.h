// The hits as a list shows them: what is new since the last look is added in one go.
#pragma once

#include "findref/HitList.h"

#include <QAbstractListModel>

namespace blockhouse {

class HitListModel : public QAbstractListModel {
    Q_OBJECT

public:
    // `hits` must outlive the model. It only grows, except right before showNone().
    HitListModel(const HitList& hits, QObject* parent) : QAbstractListModel(parent), hits_(hits) {}

    // False when there is nothing new.
    bool showNew();
    void showNone();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const HitList& hits_;
    int shown_ = 0;
};

} // namespace blockhouse
