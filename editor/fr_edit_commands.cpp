// The editor window's toolbar, menus and pop-up menu, and the commands that are no more than a line or two.
#include "editor/EditorHost.h"
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/pictures.h"

namespace blockhouse {

void fr_edit::makeToolbar() {
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setAccessibleName(tr("Editor commands"));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto button = [this](const char* picture, const QString& caption, const QString& toolTip) {
        QAction* action = Toolbar1->addAction(pictureIcon(QLatin1String(picture), {16, 24, 32, 48}), caption);
        action->setToolTip(toolTip);
        return action;
    };
    // The buttons' places are the second and the fourth.
    Toolbar1->addSeparator();
    connect(button(":/editor/artwork/save.svg", tr("Save"), tr("Save the file (Ctrl+S)")), &QAction::triggered, this,
            &fr_edit::ToolbarSave);
    Toolbar1->addSeparator();
    connect(button(":/editor/artwork/search.svg", tr("Search"), tr("Find in this file (Ctrl+F)")), &QAction::triggered,
            this, &fr_edit::openFindPanel);
}

// A shortcut of a menu counts wherever the keyboard is in the main window, as long as the menu bar shows this editor's
// menus: the tree may have the focus. Those of the pop-up menu are the text's own.
QAction* fr_edit::addCommand(QMenu* menu, const char* name, const QString& caption, const QKeySequence& shortcut,
                             void (fr_edit::*act)()) {
    QAction* command = menu->addAction(caption);
    command->setObjectName(QLatin1String(name));
    command->setShortcut(shortcut);
    command->setShortcutContext(menu == mnu_lil ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
    addAction(command);
    connect(command, &QAction::triggered, this, act);
    return command;
}

void fr_edit::makeMenus() {
    const auto menu = [this](const char* name, const QString& caption) {
        auto* made = new QMenu(caption, this);
        made->setObjectName(QLatin1String(name));
        return made;
    };
    QMenu* file = menu("mnu_file", tr("&File"));
    addCommand(file, "mnu_getchar", tr("&Getchar"), {}, &fr_edit::countCharacters);
    addCommand(file, "mnu_save", tr("&Save"), QKeySequence::Save, &fr_edit::Save);
    addCommand(file, "mnu_saveas", tr("Save &As"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &fr_edit::SaveAs);
    QMenu* edit = menu("mnu_edit", tr("&Edit"));
    addCommand(edit, "mnu_Find", tr("&Find"), QKeySequence::Find, &fr_edit::openFindPanel);
    QMenu* view = menu("mnu_view", tr("&View"));
    mnu_fileex = addCommand(view, "mnu_fileex", tr("File &Explorer"), {}, &fr_edit::toggleExplorer);
    mnu_fileex->setCheckable(true);
    menus_ = {file, edit, view};
    addKey("otherEnd", tr("Go to the other end of the block"), Qt::CTRL | Qt::Key_M, &fr_edit::goToOtherEnd);
    addKey("colourAgain", tr("Colour the whole text again"), Qt::Key_F5, &fr_edit::colourAgain);

    mnu_lil = menu("mnu_lil", QStringLiteral("lilmenu"));
    addCommand(mnu_lil, "mnu_copy", tr("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C), &fr_edit::copySelection);
    addCommand(mnu_lil, "mnu_cut", tr("Cu&t"), QKeySequence(Qt::CTRL | Qt::Key_X), &fr_edit::cutSelection);
    addCommand(mnu_lil, "mnu_paste", tr("&Paste"), QKeySequence(Qt::CTRL | Qt::Key_V), &fr_edit::pasteOverSelection);
    mnu_lil->addSeparator()->setObjectName(QStringLiteral("sdjhakshd"));
    addCommand(mnu_lil, "mnu_findref", tr("Find &Refrense"), {}, &fr_edit::findReferences);

    connect(txt_edit, &RichTextBox::mouseDown, this, [this](Qt::MouseButton button, QPoint position) {
        if (button != Qt::RightButton)
            return;
        // A click on a word is about that word, unless it is about what is selected.
        const CaretPosition clicked = txt_edit->positionAt(position);
        const CaretPosition start = txt_edit->selStart();
        if (clicked < start || clicked > start + txt_edit->selLength())
            txt_edit->setSelStart(clicked);
        showPopup(txt_edit->viewport()->mapToGlobal(position));
    });
    connect(txt_edit, &RichTextBox::menuKeyPressed, this, &fr_edit::showPopup);
}

QList<QMenu*> fr_edit::menus() {
    return menus_;
}

void fr_edit::showPopup(QPoint globalPosition) {
    mnu_lil->popup(globalPosition);
}

void fr_edit::copySelection() {
    txt_edit->copy();
}

void fr_edit::cutSelection() {
    txt_edit->cut();
}

void fr_edit::pasteOverSelection() {
    txt_edit->paste();
}

void fr_edit::countCharacters() {
    txt_edit->endComposition();
    host_.countCharacters(txt_edit->text());
}

void fr_edit::findReferences() {
    txt_edit->endComposition();
    const std::optional<std::string_view> ascii = txt_edit->asciiText();
    const std::string decoded = ascii ? std::string() : txt_edit->text();
    // The menu that was used is this window's, and the toolkit goes on with it after the search.
    static_cast<void>(stillOpenAfter(*this, [&] { host_.findReferences(ascii.value_or(decoded), txt_edit->caret()); }));
}

void fr_edit::openFindPanel() {
    FindFrame->open();
}

// Only this window's own check mark follows; it starts without one whatever the panel shows.
void fr_edit::toggleExplorer() {
    const bool show = !host_.explorerVisible();
    host_.setExplorerVisible(show);
    mnu_fileex->setChecked(show);
}

void fr_edit::addKey(const char* name, const QString& caption, const QKeySequence& key, void (fr_edit::*act)()) {
    auto* command = new QAction(caption, this);
    command->setObjectName(QLatin1String(name));
    command->setShortcut(key);
    addAction(command);
    connect(command, &QAction::triggered, this, act);
}

void fr_edit::tellTroubleWithInput() {
    connect(txt_edit, &RichTextBox::charactersReplaced, this, [this] {
        notices->tell(QStringLiteral("replaced"),
                      tr("Some characters cannot be kept in a file of this kind. Each was replaced by \"?\"."));
    });
    connect(txt_edit, &RichTextBox::clipboardFailed, this,
            [this] { notices->tell(QStringLiteral("clipboard"), clipboardIsSilent(), {}, NoticeArea::briefly); });
}

} // namespace blockhouse
