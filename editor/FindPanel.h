// The find panel that floats over the editor's text box: finds, and replaces on request. Every search reads the
// panel's boxes and the text box's selection afresh.
#pragma once

#include "platform/text/units.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <string>

namespace blockhouse {

class RichTextBox;

class FindPanel : public QFrame {
    Q_OBJECT

public:
    // Searches and changes the text box, which must outlive the panel.
    FindPanel(RichTextBox& textBox, QWidget* parent);

    // Shows the panel, within its parent, ready for typing.
    void open();
    // Hides it and gives the text box the focus.
    void dismiss();

    void Find();
    void FindNext();
    // Replaces the selection if it is what is searched for, then goes on to the next occurrence.
    void Replace();
    // Every occurrence in the text, in one undo step.
    void ReplaceAll();

    QWidget* Picture2; // the title strip; held, it drags the panel
    QPushButton* Command1;
    QLabel* Label1;
    QLineEdit* Txt_find;
    QLabel* Label2;
    QLineEdit* txt_replace;
    QCheckBox* Check1;
    QCheckBox* Check2;
    QPushButton* Command2;
    QPushButton* Command3;
    QPushButton* replaceButton;
    QPushButton* replaceAllButton;
    QTimer* Timer2;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void makeTitleStrip();
    void makeFields();
    void makeButtons();
    void layOut();
    void offerReplacing(bool offered);
    void followCursor();
    void findOrGoOn();
    void showOutcome(CaretPosition position);
    void tint(bool inVain);
    [[nodiscard]] std::string wanted() const;       // the text of Txt_find
    [[nodiscard]] std::string searchString() const; // what is looked for: a blank is added for whole words

    RichTextBox& textBox_;
};

} // namespace blockhouse
