// The find panel that floats over the editor's text box: finds, and replaces on request. Every search reads the
// panel's boxes and the text box's selection afresh. A line at its foot says what has come of the last one, and it
// moves aside when it would hide the place found.
#pragma once

#include "editor/find_rules.h"
#include "platform/text/units.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <optional>
#include <string>

namespace blockhouse {

class RichTextBox;

class FindPanel : public QFrame {
    Q_OBJECT

public:
    // Searches and changes the text box, which must outlive the panel. F3 and Shift+F3 become keys of `parent`, whether
    // or not the panel is visible.
    FindPanel(RichTextBox& textBox, QWidget* parent);

    // Shows the panel, within its parent, ready for typing. A selection within one line becomes the text to find,
    // unless the last search selected it.
    void open();
    // Hides it and gives the text box the focus.
    void dismiss();

    // Searches what is selected, or else the whole text; also the whole text if the selection is that of the last
    // search and the text to find was edited since.
    void Find();
    // From the length of the text to find behind the selection's start to the end of the text. These two select as many
    // characters where nothing is found.
    void FindNext();
    // From the selection on to the next or the previous place, round the ends of the text. Where there is none, the
    // selection stays. Opens the panel where there is no text to find yet.
    void stepForwards();
    void stepBackwards();
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
    QLabel* labelOutcome; // what has come of the last search
    QTimer* Timer2;

Q_SIGNALS:
    // A step with the panel hidden went round an end of the text.
    void wentRoundUnseen(const QString& outcome);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void makeTitleStrip();
    void makeFields();
    void makeButtons();
    void layOut();
    void offerReplacing(bool offered);
    void followCursor();
    void addKey(const char* name, const QString& caption, const QKeySequence& key, void (FindPanel::*act)());

    void appear();
    void takeOverSelection();
    void forgetOutcome();
    // Where a search by the buttons has come to, -1 for nowhere; `inVain` is what to say then of a text that stands
    // elsewhere.
    void showOutcome(CaretPosition position, const QString& inVain);
    // False, and says why, where nothing can be looked for.
    [[nodiscard]] bool readyToStep();
    void showStep(const std::optional<Occurrences::Step>& step, const QString& wentRound);
    void showPlace(TextRange place);
    void moveAside(const QRect& place);
    void say(const QString& outcome, bool inVain);
    void sayUnknown(const QString& character, bool inVain);
    // The first character that no file can hold; empty where there is none.
    [[nodiscard]] static QString unknownCharacter(const QString& text);
    // Says so and returns false if the text to find or the one to put in its place has one.
    [[nodiscard]] bool canReplace();
    [[nodiscard]] QString numberOf(std::size_t number);
    // The text box holds no uncommitted text.
    [[nodiscard]] const Occurrences& occurrences();
    [[nodiscard]] TextRange selection() const;
    [[nodiscard]] std::string wanted() const;       // the text of Txt_find
    [[nodiscard]] std::string searchString() const; // what is looked for: a blank is added for whole words

    RichTextBox& textBox_;
    std::optional<Occurrences> occurrences_; // until the text, or what is looked for, changes
    std::optional<TextRange> left_;          // what the last search selected
    bool editedSince_ = false;               // the text to find, since that search
};

} // namespace blockhouse
