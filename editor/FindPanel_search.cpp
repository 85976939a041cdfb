// What the find panel searches, says and replaces.
#include "editor/FindPanel.h"
#include "editor/textboxbas.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"
#include "platform/widgets/qt_text.h"

#include <QAccessible>

#include <algorithm>
#include <array>

namespace blockhouse {

// --- What is looked for -----------------------------------------------------------------------------------------

std::string FindPanel::wanted() const {
    return documentBytes(Txt_find->text()).bytes;
}

std::string FindPanel::searchString() const {
    return blockhouse::searchString(wanted(), Check1->isChecked());
}

QString FindPanel::unknownCharacter(const QString& text) {
    for (const auto codePoint : text.toUcs4()) {
        const auto character = static_cast<char32_t>(codePoint);
        QString shown = QString::fromUcs4(&character, 1);
        if (documentBytes(shown).lossy)
            return shown;
    }
    return {};
}

void FindPanel::forgetOutcome() {
    occurrences_.reset();
    say({}, false);
}

// What the last search selected is either what is looked for already, in other letters, or not what anybody wants.
void FindPanel::takeOverSelection() {
    textBox_.endComposition();
    const TextRange selected = selection();
    if (selected.length == 0 || selected == left_ || selected.length > Txt_find->maxLength())
        return;
    const std::string text = textBox_.selText();
    if (text.find_first_of("\r\n") != std::string::npos)
        return;
    Txt_find->setText(documentText(text));
    left_ = selected;
    editedSince_ = false;
}

TextRange FindPanel::selection() const {
    return {textBox_.selStart().value, textBox_.selLength()};
}

const Occurrences& FindPanel::occurrences() {
    if (!occurrences_) {
        const std::optional<std::string_view> ascii = textBox_.asciiText();
        const std::string decoded = ascii ? std::string() : textBox_.text();
        occurrences_.emplace(ascii.value_or(decoded), wanted(), Check1->isChecked());
    }
    return *occurrences_;
}

// --- Searching --------------------------------------------------------------------------------------------------

void FindPanel::Find() {
    if (wanted().empty())
        return;
    textBox_.endComposition();
    CaretPosition found = -1;
    if (unknownCharacter(Txt_find->text()).isEmpty()) {
        const bool wholeText = editedSince_ && selection() == left_;
        found = wholeText ? textBox_.find(searchString(), 0) : textBox_.find(searchString());
    }
    showOutcome(found, tr("Not found in what was selected"));
}

void FindPanel::FindNext() {
    const std::string text = wanted();
    if (text.empty())
        return;
    textBox_.endComposition();
    CaretPosition found = -1;
    if (unknownCharacter(Txt_find->text()).isEmpty())
        found = textBox_.find(searchString(), textBox_.selStart() + text.size());
    showOutcome(found, tr("Not found from here on"));
}

void FindPanel::showOutcome(CaretPosition position, const QString& inVain) {
    const auto length = static_cast<std::ptrdiff_t>(wanted().size());
    if (position > 0)
        textBox_.setSelStart(position);
    textBox_.setSelLength(length);
    const QString unknown = unknownCharacter(Txt_find->text());
    if (!unknown.isEmpty())
        sayUnknown(unknown, true);
    else if (position >= 0)
        say(numberOf(occurrences().numberAt(position)), false);
    else
        say(occurrences().count() == 0 ? tr("Not found") : inVain, true);
    showPlace({textBox_.selStart().value, length});
}

void FindPanel::stepForwards() {
    if (!readyToStep())
        return;
    const CaretPosition start = textBox_.selStart();
    const std::string text = wanted();
    const bool isPlace = textBox_.selLength() == static_cast<std::ptrdiff_t>(text.size()) &&
                         codepage::equalIgnoringCase(textBox_.selText(), text);
    showStep(occurrences().next(isPlace ? start + text.size() : start), tr("%1 \u2013 from the start again"));
}

void FindPanel::stepBackwards() {
    if (readyToStep())
        showStep(occurrences().previous(textBox_.selStart()), tr("%1 \u2013 from the end again"));
}

bool FindPanel::readyToStep() {
    if (wanted().empty()) {
        if (!isVisible())
            open();
        return false;
    }
    textBox_.endComposition();
    const QString unknown = unknownCharacter(Txt_find->text());
    if (unknown.isEmpty())
        return true;
    sayUnknown(unknown, true);
    appear();
    return false;
}

// A hidden panel shows itself to say that there is nothing, since nothing else would be seen of the key.
void FindPanel::showStep(const std::optional<Occurrences::Step>& step, const QString& wentRound) {
    if (!step) {
        say(tr("Not found"), true);
        appear();
        return;
    }
    const auto length = static_cast<std::ptrdiff_t>(wanted().size());
    textBox_.setSelStart(step->start);
    textBox_.setSelLength(length);
    const QString number = numberOf(step->number);
    const QString outcome = step->wentRound ? wentRound.arg(number) : number;
    say(outcome, false);
    if (step->wentRound && !isVisible())
        Q_EMIT wentRoundUnseen(outcome);
    showPlace({step->start.value, length});
}

QString FindPanel::numberOf(std::size_t number) {
    return tr("%1 of %2").arg(number).arg(occurrences().count());
}

// --- Showing ----------------------------------------------------------------------------------------------------

void FindPanel::showPlace(TextRange place) {
    left_ = selection();
    editedSince_ = false;
    ScrollLines(textBox_, 0, GetCurrentLine(textBox_) - GetFirstVisibleLine(textBox_));
    const CaretPosition end = place.start + place.length;
    textBox_.scrollSideways(place.start, end);
    if (isVisible())
        moveAside(textBox_.characterRect(place.start).united(textBox_.characterRect(end - 1)));
}

// To the place at an edge of the text that is nearest and does not cover `place`, in the viewport's coordinates. A
// panel that somebody holds stays in the hand.
void FindPanel::moveAside(const QRect& place) {
    const QPoint origin = textBox_.viewport()->mapTo(parentWidget(), QPoint());
    const QRect hit = place.translated(origin);
    if (Timer2->isActive() || !geometry().intersects(hit))
        return;
    const QRect room(origin, textBox_.viewport()->size());
    const int right = room.right() + 1 - width();
    const int bottom = room.bottom() + 1 - height();
    std::optional<QPoint> nearest;
    for (const QPoint corner :
         std::array{QPoint(right, y()), QPoint(room.left(), y()), QPoint(x(), bottom), QPoint(x(), room.top()),
                    QPoint(right, bottom), QPoint(room.left(), bottom), QPoint(right, room.top()), room.topLeft()}) {
        const QRect moved(corner, size());
        const bool isFree = !moved.intersects(hit) && parentWidget()->rect().contains(moved);
        if (isFree && (!nearest || (corner - pos()).manhattanLength() < (*nearest - pos()).manhattanLength()))
            nearest = corner;
    }
    if (nearest)
        move(*nearest);
}

void FindPanel::sayUnknown(const QString& character, bool inVain) {
    say(tr("\"%1\" is not a character of these files").arg(character), inVain);
}

void FindPanel::say(const QString& outcome, bool inVain) {
    // At every key in the text.
    if (outcome.isEmpty() && labelOutcome->text().isEmpty())
        return;
    labelOutcome->setText(outcome);
    layOut();
    labelOutcome->setToolTip(outcome);
    labelOutcome->setAccessibleName(outcome.isEmpty() ? tr("Outcome of the search") : outcome);
    if (!outcome.isEmpty()) {
        QAccessibleEvent told(labelOutcome, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    }
    QPalette palette;
    if (inVain) {
        palette.setColor(QPalette::Base, QColor(255, 205, 205));
        palette.setColor(QPalette::Text, Qt::black);
    }
    Txt_find->setPalette(palette);
}

// --- Replacing --------------------------------------------------------------------------------------------------

bool FindPanel::canReplace() {
    const QString toFind = unknownCharacter(Txt_find->text());
    const QString unknown = toFind.isEmpty() ? unknownCharacter(txt_replace->text()) : toFind;
    if (!unknown.isEmpty())
        sayUnknown(unknown, !toFind.isEmpty());
    return unknown.isEmpty();
}

void FindPanel::Replace() {
    const std::string text = wanted();
    if (text.empty() || !canReplace())
        return;
    CaretPosition from = textBox_.selStart();
    const bool isHit =
        textBox_.selLength() == static_cast<std::ptrdiff_t>(text.size()) && textBox_.find(searchString(), from) == from;
    textBox_.setSelStart(from);
    if (isHit) {
        textBox_.setSelLength(static_cast<std::ptrdiff_t>(text.size()));
        textBox_.setSelText(documentBytes(txt_replace->text()).bytes);
        from = textBox_.selStart();
    }
    showOutcome(textBox_.find(searchString(), from), tr("Not found from here on"));
}

void FindPanel::ReplaceAll() {
    const std::string text = wanted();
    if (text.empty() || !canReplace())
        return;
    textBox_.endComposition();
    const std::vector<TextRange> hits = replaceableRanges(textBox_.text(), text, Check1->isChecked());
    textBox_.replaceRanges(hits, documentBytes(txt_replace->text()).bytes);
    say(hits.empty() ? tr("Not found") : tr("%1 replaced").arg(hits.size()), hits.empty());
}

} // namespace blockhouse
