#include "platform/richtext/RichTextAccessible.h"

#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

namespace blockhouse {
namespace {

QAccessibleInterface* accessibleOf(const QString& className, QObject* object) {
    auto* box = className == QLatin1String("blockhouse::RichTextBox") ? qobject_cast<RichTextBox*>(object) : nullptr;
    return box ? new RichTextAccessible(box) : nullptr;
}

QString cssColour(Colour colour) {
    return QStringLiteral("rgb(%1,%2,%3)").arg(redOf(colour)).arg(greenOf(colour)).arg(blueOf(colour));
}

} // namespace

void RichTextAccessible::install() {
    static const bool installed = (QAccessible::installFactory(accessibleOf), true);
    Q_UNUSED(installed)
}

RichTextAccessible::RichTextAccessible(RichTextBox* box) : QAccessibleWidget(box, QAccessible::EditableText) {}

RichTextBox* RichTextAccessible::box() const {
    return static_cast<RichTextBox*>(object());
}

void* RichTextAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State RichTextAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void RichTextAccessible::selection(int selectionIndex, int* startOffset, int* endOffset) const {
    const bool exists = selectionIndex == 0 && selectionCount() == 1;
    *startOffset = exists ? static_cast<int>(box()->selStart()) : 0;
    *endOffset = exists ? static_cast<int>(box()->selStart() + box()->selLength()) : 0;
}

int RichTextAccessible::selectionCount() const {
    return box()->selLength() > 0 ? 1 : 0;
}

void RichTextAccessible::addSelection(int startOffset, int endOffset) {
    setSelection(0, startOffset, endOffset);
}

void RichTextAccessible::removeSelection(int selectionIndex) {
    if (selectionIndex == 0)
        box()->setSelLength(0);
}

void RichTextAccessible::setSelection(int selectionIndex, int startOffset, int endOffset) {
    if (selectionIndex != 0)
        return;
    box()->setSelStart(startOffset);
    box()->setSelLength(endOffset - startOffset);
}

int RichTextAccessible::cursorPosition() const {
    return static_cast<int>(box()->caret());
}

void RichTextAccessible::setCursorPosition(int position) {
    box()->setSelStart(position);
}

QString RichTextAccessible::text(int startOffset, int endOffset) const {
    return QString::fromStdString(codepage::toUtf8(box()->textAt(startOffset, endOffset - startOffset)));
}

int RichTextAccessible::characterCount() const {
    return static_cast<int>(box()->textLength());
}

QRect RichTextAccessible::characterRect(int offset) const {
    const QRect inView = box()->characterRect(offset);
    return {box()->viewport()->mapToGlobal(inView.topLeft()), inView.size()};
}

int RichTextAccessible::offsetAtPoint(const QPoint& point) const {
    return static_cast<int>(box()->positionAt(box()->viewport()->mapFromGlobal(point)));
}

void RichTextAccessible::scrollToSubstring(int startIndex, int endIndex) {
    box()->scrollIntoView(startIndex, endIndex);
}

QString RichTextAccessible::attributes(int offset, int* startOffset, int* endOffset) const {
    *startOffset = offset;
    *endOffset = offset + 1;
    return QStringLiteral("color:%1;background-color:%2;")
        .arg(cssColour(box()->textColorAt(offset)), cssColour(box()->backgroundAt(offset)));
}

} // namespace blockhouse
