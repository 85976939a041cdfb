#include "findref/fr_findref.h"

#include "findref/HitListModel.h"
#include "findref/ReferenceSearch.h"
#include "platform/text/codepage.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/DeletionHold.h"
#include "platform/widgets/window_handles.h"
#include "platform/widgets/yield.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace blockhouse {
namespace {

constexpr QSize designSize(pixelsOf(5025), pixelsOf(3990));

// The texts that a file can hold: one with any other character is found nowhere.
std::string encoded(const QString& text) {
    codepage::Encoded encoded = codepage::fromUtf8(text.toStdString());
    return encoded.lossy ? std::string() : std::move(encoded.bytes);
}

} // namespace

fr_findref::fr_findref(const EntryList& Dirs, ProgressPainter drawProgress)
    : Dirs_(Dirs), drawProgress_(std::move(drawProgress)), model_(new HitListModel(hits_, this)) {
    setObjectName(QStringLiteral("fr_findref"));
    setWindowTitle(tr("Find Refrence"));
    setAccessibleName(tr("Find Refrence"));
    makeControls();
    resize(designSize);
}

fr_findref::~fr_findref() = default;

void fr_findref::makeControls() {
    Text1 = named(new QLineEdit(tr("Text1"), this), "Text1", tr("Text to search for"));
    command1 = named(new QPushButton(tr("&Search"), this), "command1", tr("Search"));
    List1 = named(new QListView(this), "List1", tr("Hits"));
    Picture1 = named(new PictureBox(this), "Picture1", tr("Progress through the directory"));
    Label1 = named(new QLabel(this), "Label1", tr("Directory being searched"));

    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(7.5);
    List1->setFont(font);
    List1->setModel(model_);
    List1->setUniformItemSizes(true);
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    stopAtEntriesOnly(*List1);
    setFocusProxy(Text1);

    connect(command1, &QPushButton::clicked, this, &fr_findref::search);
    connect(Text1, &QLineEdit::returnPressed, this, &fr_findref::search);
    connect(List1, &QListView::doubleClicked, this, &fr_findref::openHit);
}

QSize fr_findref::sizeHint() const {
    return designSize;
}

void fr_findref::resizeEvent(QResizeEvent*) {
    layOut();
}

// Taller, the list grows; wider, the list and the text to search for do.
void fr_findref::layOut() {
    const int right = width() - designSize.width();
    const int down = height() - designSize.height();
    List1->setGeometry(0, 0, std::max(pixelsOf(4692) + right, 0), std::max(pixelsOf(2595) + down, 0));
    Picture1->setGeometry(0, pixelsOf(2880) + down, pixelsOf(2172), pixelsOf(252));
    Label1->move(pixelsOf(2280), pixelsOf(2880) + down);
    command1->setGeometry(pixelsOf(120), pixelsOf(3240) + down, pixelsOf(1332), pixelsOf(372));
    Text1->setGeometry(pixelsOf(1560), pixelsOf(3240) + down, std::max(pixelsOf(1932) + right, 0), pixelsOf(372));
}

void fr_findref::present() {
    bringUp(this);
    Text1->setFocus();
    Text1->selectAll();
}

void fr_findref::findRef(std::string_view what) {
    present();
    Text1->setText(QString::fromStdString(codepage::toUtf8(what)));
    search();
}

void fr_findref::stop() {
    givenUp_ = true;
    searchWanted_ = false;
}

void fr_findref::search() {
    const DeletionHold hold(parentWidget() ? parentWidget() : this);
    searchWanted_ = true;
    givenUp_ = true;
    // The call that is under way will see to it: each search inside the one before would fill the stack.
    if (std::exchange(searching_, true))
        return;
    while (std::exchange(searchWanted_, false)) {
        givenUp_ = false;
        if (!searchOnce())
            return;
    }
    searching_ = false;
}

bool fr_findref::searchOnce() {
    using Step = ReferenceSearch::Step;
    const QPointer<fr_findref> self(this);
    ReferenceSearch search(Dirs_, hits_);
    model_->showNone();
    if (Text1->text().isEmpty())
        return true;
    while (!givenUp_) {
        const Step step = search.next(encoded(Text1->text()));
        model_->showNew();
        if (step.kind == Step::Ended)
            break;
        if (step.kind == Step::DirectoryReached) {
            Label1->setText(tr("%1 out of %2").arg(step.index).arg(Dirs_.count()));
            Label1->adjustSize();
        }
        if (step.kind == Step::FileReached && !showProgress(step.index, step.last))
            return false;
        yield();
        if (!self || closing_)
            return false;
    }
    return true;
}

// Thousands of small files would otherwise wait for the bar rather than for the disk.
bool fr_findref::showProgress(int value, int maximum) {
    constexpr qint64 interval = 20; // milliseconds
    if (value > 0 && value < maximum && sinceProgress_.isValid() && sinceProgress_.elapsed() < interval)
        return true;
    sinceProgress_.start();
    const QPointer<fr_findref> self(this);
    drawProgress_(*Picture1, value, maximum);
    return self && !closing_;
}

void fr_findref::openHit(const QModelIndex& hit) {
    if (!hit.isValid())
        return;
    const DeletionHold hold(parentWidget() ? parentWidget() : this);
    Q_EMIT hitChosen(hits_.path(hit.row()), hits_.position(hit.row()), hits_.length(hit.row()));
}

void fr_findref::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        stop();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && List1->hasFocus())
        openHit(List1->currentIndex());
    else
        QWidget::keyPressEvent(event);
}

void fr_findref::closeEvent(QCloseEvent* event) {
    closing_ = true;
    event->accept();
    Q_EMIT closed();
}

} // namespace blockhouse
