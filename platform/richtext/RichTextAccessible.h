// What assistive technology sees of a rich-text box. Every answer costs no more than the text it hands out; the
// text engine's own accessible object counts characters from the document's start at every change.
#pragma once

#include <QAccessibleWidget>

namespace blockhouse {

class RichTextBox;

class RichTextAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    // Must have run before the first box is shown; further calls do nothing.
    static void install();

    explicit RichTextAccessible(RichTextBox* box);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    using QAccessibleWidget::text;
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

private:
    [[nodiscard]] RichTextBox* box() const;
};

} // namespace blockhouse
