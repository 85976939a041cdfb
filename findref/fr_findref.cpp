#include "findref/fr_findref.h"

#include "findref/HitListModel.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace blockhouse {
namespace {

constexpr QSize designSize(pixelsOf(5025), pixelsOf(3990));

const auto endedEarly = QStringLiteral("endedEarly");

// The texts that a file can hold: one with any other character is found nowhere.
std::string encoded(const QString& text) {
    codepage::Encoded encoded = documentBytes(text);
    return encoded.lossy ? std::string() : std::move(encoded.bytes);
}

} // namespace

fr_findref::fr_findref(const EntryList& Dirs, ProgressPainter drawProgress)
    : Dirs_(Dirs), drawProgress_(std::move(drawProgress)), model_(new HitListModel(hits_, this)), search_(*this) {
    setObjectName(QStringLiteral("fr_findref"));
    setWindowTitle(tr("Find Refrence"));
    setAccessibleName(tr("Find Refrence"));
    makeControls();
    resize(sizeHint());
}

fr_findref::~fr_findref() = default;

void fr_findref::makeControls() {
    Text1 = named(new QLineEdit(tr("Text1"), this), "Text1", tr("Text to search for"));
    command1 = named(new QPushButton(tr("&Search"), this), "command1", tr("Search"));
    List1 = named(new QListView(this), "List1", tr("Hits"));
    Picture1 = named(new PictureBox(this), "Picture1", tr("Progress through the directory"));
    Label1 = named(new QLabel(this), "Label1", tr("Directory being searched"));

    notices = new NoticeArea(*List1);
    List1->setFont(arial(7.5));
    List1->setModel(model_);
    List1->setUniformItemSizes(true);
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    stopAtEntriesOnly(*List1);
    setFocusProxy(Text1);

    connect(command1, &QPushButton::clicked, this, &fr_findref::search);
    connect(Text1, &QLineEdit::returnPressed, this, &fr_findref::search);
    pasteWithin(*Text1,
                [this] { notices->tell(QStringLiteral("clipboard"), clipboardIsSilent(), {}, NoticeArea::briefly); });
    connect(List1, &QListView::doubleClicked, this, &fr_findref::openHit);
    // Of the list alone: the press that started a search in the text box must not open a hit when the search ends.
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        const auto* opening = new QShortcut(key, List1, nullptr, nullptr, Qt::WidgetShortcut);
        connect(opening, &QShortcut::activated, this, [this] { openHit(List1->currentIndex()); });
    }
}

// The design sizes, or what the texts in them need.
int fr_findref::barHeight() const {
    return std::max(pixelsOf(252), textHeight(*Label1) + 2);
}

int fr_findref::rowHeight() const {
    return std::max(pixelsOf(372), textHeight(*Text1) + 8);
}

int fr_findref::buttonWidth() const {
    return std::max(pixelsOf(1332), textWidth(*command1, command1->text()) + 24);
}

QSize fr_findref::sizeHint() const {
    const QSize grown(buttonWidth() - pixelsOf(1332), barHeight() - pixelsOf(252) + rowHeight() - pixelsOf(372));
    return designSize + grown;
}

void fr_findref::resizeEvent(QResizeEvent*) {
    layOut();
}

void fr_findref::changeEvent(QEvent* event) {
    if (changesRoomOfTexts(*event)) {
        Label1->adjustSize();
        layOut();
    }
    QWidget::changeEvent(event);
}

// Taller, the list grows; wider, the list and the text to search for do.
void fr_findref::layOut() {
    const int right = width() - sizeHint().width();
    const int down = height() - sizeHint().height();
    const int bar = pixelsOf(2880) + down;
    const int row = bar + barHeight() + pixelsOf(3240 - 2880 - 252);
    const int text = pixelsOf(1560 - 1332) + buttonWidth();
    List1->setGeometry(0, 0, std::max(width() - pixelsOf(5025 - 4692), 0), std::max(pixelsOf(2595) + down, 0));
    Picture1->setGeometry(0, bar, pixelsOf(2172), barHeight());
    Label1->move(pixelsOf(2280), bar);
    command1->setGeometry(pixelsOf(120), row, buttonWidth(), rowHeight());
    Text1->setGeometry(text, row, std::max(pixelsOf(1932) + right, 0), rowHeight());
}

void fr_findref::present() {
    show();
    Q_EMIT frontWanted();
    Text1->setFocus();
    Text1->selectAll();
}

void fr_findref::findRef(std::string_view what) {
    present();
    Text1->setText(documentText(what));
    search();
}

void fr_findref::search() {
    using Then = LongWork::Then;
    const auto search = std::make_shared<std::optional<ReferenceSearch>>();
    search_.run({[this, search] {
                     // A search that was under way has ended, and the hits are no longer its own.
                     search->emplace(Dirs_, hits_);
                     model_->showNone();
                     Label1->setToolTip({});
                     notices->withdraw(endedEarly);
                     return Text1->text().isEmpty() ? Then::End : Then::NextStep;
                 },
                 [this, search] { return searchOn(**search) ? Then::Again : Then::NextStep; },
                 [this] {
                     showHits();
                     return Then::End;
                 }});
}

bool fr_findref::searchOn(ReferenceSearch& search) {
    constexpr qint64 interval =
        30; // milliseconds: laying out a long list anew for each hit would take most of the time
    const ReferenceSearch::Step step = search.next(encoded(Text1->text()));
    if (model_->rowCount() == 0 || !sinceHits_.isValid() || sinceHits_.elapsed() >= interval)
        showHits();
    if (const auto* directory = std::get_if<ReferenceSearch::DirectoryReached>(&step)) {
        Label1->setText(tr("%1 out of %2").arg(directory->number).arg(Dirs_.count()));
        Label1->adjustSize();
    }
    if (const auto* file = std::get_if<ReferenceSearch::FileReached>(&step))
        showProgress(file->index, file->last);
    if (const auto* end = std::get_if<ReferenceSearch::Ended>(&step))
        tellEnd(*end);
    return !std::holds_alternative<ReferenceSearch::Ended>(step);
}

void fr_findref::tellEnd(const ReferenceSearch::Ended& end) {
    QString why;
    if (end.failure)
        why = tr("The search ended early. %1: %2")
                  .arg(displayed(end.failure->path), QString::fromStdString(end.failure->cause));
    else if (end.tooManyHits)
        why = tr("The search ended early: there are more places than the list can hold.");
    Label1->setToolTip(why);
    if (!why.isEmpty())
        notices->tell(endedEarly, why);
}

// New rows are laid out at once: a list that is painted in between would be blank.
void fr_findref::showHits() {
    sinceHits_.start();
    if (model_->showNew())
        List1->doItemsLayout();
}

// Thousands of small files would otherwise wait for the bar rather than for the disk.
void fr_findref::showProgress(int value, int maximum) {
    constexpr qint64 interval = 20; // milliseconds
    if (value > 0 && value < maximum && sinceProgress_.isValid() && sinceProgress_.elapsed() < interval)
        return;
    sinceProgress_.start();
    drawProgress_(*Picture1, value, maximum);
}

void fr_findref::openHit(const QModelIndex& hit) {
    if (!hit.isValid())
        return;
    // The list goes on with the double-click afterwards.
    static_cast<void>(stillOpenAfter(
        *this, [this, row = hit.row()] { Q_EMIT hitChosen(hits_.path(row), hits_.position(row), hits_.text(row)); }));
}

void fr_findref::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        search_.abandon();
        showHits();
        notices->dismiss();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void fr_findref::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

} // namespace blockhouse
