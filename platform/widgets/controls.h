// Making controls of windows: a name to be found by, and a place as the design gives it.
#pragma once

#include "platform/text/units.h"

#include <QListWidget>
#include <QRect>
#include <QString>
#include <QWidget>

namespace blockhouse {

// The object name is the control's given one; the accessible name is for people.
template <typename Control>
Control* named(Control* control, const char* objectName, const QString& accessibleName) {
    control->setObjectName(QLatin1String(objectName));
    control->setAccessibleName(accessibleName);
    return control;
}

[[nodiscard]] constexpr int pixelsOf(double twips) {
    return toPixels(Twips{twips}).value;
}

// All in twips; relative to whatever holds the control.
[[nodiscard]] constexpr QRect designPlace(double left, double top, double width, double height) {
    return {pixelsOf(left), pixelsOf(top), pixelsOf(width), pixelsOf(height)};
}

template <typename Control>
Control* named(Control* control, const char* objectName, const QString& accessibleName, QRect place) {
    control->setGeometry(place);
    return named(control, objectName, accessibleName);
}

// Entered by the keyboard, a list makes its first entry the current one, and looks as if it were chosen.
inline void selectWhatIsCurrent(QListWidget& list) {
    QObject::connect(&list, &QListWidget::currentItemChanged, &list, [](QListWidgetItem* current) {
        if (current != nullptr)
            current->setSelected(true);
    });
}

// An empty list shows nothing of the focus, so Tab passes it by. The list has its model already.
inline void stopAtEntriesOnly(QAbstractItemView& list) {
    const auto update = [widget = static_cast<QWidget*>(&list)] {
        // A list with a model of its own empties that while it is being taken apart, and is no list any more.
        if (auto* view = qobject_cast<QAbstractItemView*>(widget))
            view->setFocusPolicy(view->model()->rowCount() > 0 ? Qt::StrongFocus : Qt::ClickFocus);
    };
    for (const auto changed : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        QObject::connect(list.model(), changed, &list, update);
    QObject::connect(list.model(), &QAbstractItemModel::modelReset, &list, update);
    update();
}

} // namespace blockhouse
