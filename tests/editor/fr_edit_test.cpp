#include "editor/fr_edit.h"
#include "platform/system/files.h"
#include "platform/widgets/qt_text.h"
#include "platform/widgets/window_lock.h"
#include "platform/widgets/yield.h"
#include "tests/editor/box_look.h"
#include "tests/editor/FakeHost.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QProxyStyle>
#include <QTest>

#include <functional>
#include <numeric>
#include <set>

namespace blockhouse {
namespace {

constexpr int progressSteps = 7;

class RecordingHost : public FakeHost {
public:
    void drawProgress(PictureBox& box, double value, double maximum) override {
        EXPECT_EQ(box.objectName(), QStringLiteral("thebar"));
        log += std::to_string(static_cast<int>(value)) + "/" + std::to_string(static_cast<int>(maximum)) + " ";
        ++drawn;
        if (onProgress)
            onProgress();
    }

    void windowOpened(WindowHandle window, const QString& caption) override {
        log += "opened(" + caption.toStdString() + ") ";
        opened = window;
    }

    void windowClosed(WindowHandle window) override {
        log += "closed ";
        closed = window;
    }

    std::string log;
    std::function<void()> onProgress;
    int drawn = 0;
    WindowHandle opened = 0;
    WindowHandle closed = 0;
};

class FrEdit : public testing::Test {
protected:
    void SetUp() override {
        area_->resize(700, 600);
        area_->show();
        newEditor();
    }

    void TearDown() override { delete area_; }

    void newEditor() {
        editor_ = new fr_edit(host_);
        frame_ = area_->addSubWindow(editor_);
        host_.log.clear();
        host_.drawn = 0;
    }

    void open(std::string_view bytes, std::ptrdiff_t startout = 0) {
        editor_->Openfile(temp_.file("tank.ini", bytes), TextPosition{startout});
    }

    void deleteWhatWasClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    // The entries of the block list with their item data; a star before the selected one.
    [[nodiscard]] std::string blockList() const {
        std::string text;
        for (int index = 0; index < editor_->List1->count(); ++index) {
            text += index == editor_->List1->currentIndex() ? "*" : "";
            text += editor_->List1->itemText(index).toStdString() + "/";
            text += editor_->List1->itemData(index).toString().toStdString() + " ";
        }
        return text;
    }

    TempFolder temp_;
    RecordingHost host_;
    QPointer<QMdiArea> area_ = new QMdiArea;
    QPointer<fr_edit> editor_;
    QPointer<QMdiSubWindow> frame_;
};

TEST_F(FrEdit, OpeningAFileGoesStepByStep) {
    const std::string bytes = "Object Alphaone\r\nEnd ; done\r\n";
    open(bytes);
    EXPECT_EQ(host_.log, "1/10 1/5 opened(tank.ini) 6/10 7/10 8/10 9/10 10/10 ");
    EXPECT_EQ(host_.opened, editor_->handle());
    EXPECT_TRUE(editor_->isVisible());
    EXPECT_EQ(editor_->windowTitle(), QStringLiteral("/tank.ini"));
    EXPECT_EQ(editor_->Filepath, temp_.path("tank.ini"));
    EXPECT_EQ(editor_->Filetext, bytes);
    EXPECT_EQ(editor_->txt_edit->text(), bytes);
    EXPECT_EQ(look(*editor_->txt_edit), "kkkkkk...........kkk.hhhhhh..");
    EXPECT_EQ(area_->focusWidget(), editor_->txt_edit);
    frame_->close();
    EXPECT_EQ(host_.closed, editor_->handle());
}

TEST_F(FrEdit, CaptionStartsAtTheLastSeparatorOfEitherKind) {
    const struct {
        const char* path;
        const char* title;
        const char* button;
    } cases[] = {{"a b.ini", "/a b.ini", "a b.ini"},
                 {"c\\d.ini", "\\d.ini", "d.ini"},
                 {"caf\xC3\xA9", "/caf\u00E9", "caf\u00E9"}};

    for (const auto& [path, title, button] : cases) {
        newEditor();
        editor_->Openfile(temp_.file(path));
        EXPECT_EQ(editor_->windowTitle().toStdString(), title);
        EXPECT_NE(host_.log.find(std::string("opened(") + button + ")"), std::string::npos) << host_.log;
    }
}

TEST_F(FrEdit, ListsTheBlocksAndSelectsOne) {
    const std::string body = "\r\n  Side = Somebody\r\n  Place = Far from anywhere else\r\nEnd\r\n";
    const std::string objects =
        "Object Gammathree" + body + "Object Betatwo" + body + "Object Alphaone" + body + "Object Deltaas four\r\n";
    const std::string weapons = "Weapon Longbarrel\r\nWeapon Shortbarrel\r\nWeapon Widebarrel\r\n";
    const std::string powers =
        "SpecialPower Powerone\r\nSpecialPower Powertwo\r\nSuperWeapon Powertwo\r\nSpecialPower Powernil\r\n";
    const auto at = [](const std::string& text, const char* what) { return static_cast<int>(text.find(what)) + 1; };

    const struct {
        std::string text;
        int startout;
        int kind;
        const char* list;
    } cases[] = {
        {objects, 0, 1, "Alphaone/1 *Betatwo/1 Gammathree/1 "},
        {objects, 1, 1, "Alphaone/1 *Betatwo/1 Gammathree/1 "}, // no line feed before the first header
        {"\r\n" + objects, 1, 1, "Alphaone/1 Betatwo/1 *Gammathree/1 "},
        {objects, at(objects, "Alphaone"), 1, "*Alphaone/1 Betatwo/1 Gammathree/1 "},
        {objects, at(objects, "Deltaas"), 1, "Alphaone/1 *Betatwo/1 Gammathree/1 "}, // a header that is not listed
        {objects, 1'000'000, 1, "Alphaone/1 *Betatwo/1 Gammathree/1 "},
        {"\r\n" + objects, -1, 1, "Alphaone/1 *Betatwo/1 Gammathree/1 "},
        {"Object Alphaone\r\n" + objects + "object ALPHAONE\r\n", 0, 1,
         "Alphaone/1 *Alphaone/0 ALPHAONE/0 Betatwo/1 Gammathree/1 "},
        {"Object Alphaone\r\nObject Betatwo\r\n" + weapons, 0, 2, "Longbarrel/2 *Shortbarrel/2 Widebarrel/2 "},
        {powers, at(powers, "Powernil"), 3, "Powernil/3 Powerone/3 *Powertwo/3 "},
        {weapons.substr(0, 39), 0, 2, ""}, // two are too few
        {"nothing", 5, 0, ""},
        {"", 0, 0, ""},
    };

    for (const auto& [text, startout, kind, list] : cases) {
        newEditor();
        open(text, startout);
        EXPECT_EQ(blockList(), list) << text << " at " << startout;
        EXPECT_EQ(static_cast<int>(editor_->BlockKind), kind) << text;
        EXPECT_EQ(editor_->List1->isEnabled(), editor_->List1->count() > 0);
        EXPECT_EQ(editor_->txt_edit->text(), text);
        EXPECT_EQ(editor_->txt_edit->selStart(), 0);
    }
    newEditor();
    open(objects);
    EXPECT_EQ(editor_->Findin("BETATWO"), 1);
    EXPECT_EQ(editor_->Findin("Beta"), -1);
}

TEST_F(FrEdit, FormatBoxColoursKeywordsAndComments) {
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"", ""},
        {"End\r\nEND\r\nend", "kkk..kkk....."},
        {"Object Foo\r\nobject Foo", "kkkkkk................"},
        {"WeaponSet WeaponSets Weapon2 (Weapon) Weapon-1", "kkkkkkkkk.....................kkkkkk..kkkkkk.."},
        {"SpecialPower FXList Specialpower Fxlist", "....................kkkkkkkkkkkk.kkkkkk"},
        {"Behavior = Tag ; Body here\r\nx", "kkkkkkkk.......hhbbbbhhhhh..."},
        {"A = \"b;c\" ; End", "............kkk"},
        {"A = \"Turret\"", ".....kkkkkk."},
    };

    for (const auto& [text, expected] : cases) {
        editor_->txt_edit->setText(text);
        editor_->Combo1->addItem(QStringLiteral("setting"));
        editor_->FormatBox();
        EXPECT_EQ(look(*editor_->txt_edit), expected) << text;
        EXPECT_EQ(editor_->Combo1->count(), 0);
    }
}

TEST_F(FrEdit, FormatBoxShowsTheHourglassAndKeepsTheView) {
    frame_->show();
    RichTextBox& box = *editor_->txt_edit;
    for (const char* end : {"", "; comment"}) {
        box.setText(numberedLines(300) + end);
        box.setSelStart(50);
        box.scrollLines(0, 123);
        const QMetaObject::Connection during = QObject::connect(&box, &RichTextBox::changed, [&] {
            ASSERT_TRUE(QGuiApplication::overrideCursor());
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            EXPECT_FALSE(editor_->updatesEnabled());
        });
        editor_->FormatBox();
        QObject::disconnect(during);
        EXPECT_EQ(box.firstVisibleLine(), 123);
        EXPECT_EQ(box.selStart(), *end ? 0 : 50);
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        EXPECT_TRUE(editor_->updatesEnabled());
    }
}

// Neither without colours nor with the keywords alone, however often events are served.
TEST_F(FrEdit, ATextIsPaintedOnlyWhenAllOfItHasItsColours) {
    struct Painting : QObject {
        explicit Painting(const RichTextBox& shown) : box(shown) {}

        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint && box.textLength() > 0)
                looks.insert(look(box));
            return false;
        }

        const RichTextBox& box;
        std::set<std::string> looks;
    };

    const EagerYield eager;
    area_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(area_));
    frame_->show();
    Painting painting(*editor_->txt_edit);
    editor_->txt_edit->viewport()->installEventFilter(&painting);
    host_.onProgress = [] { QCoreApplication::processEvents(); };
    open("Object Alphaone\r\nEnd ; done\r\n");
    QCoreApplication::processEvents();
    EXPECT_EQ(painting.looks, std::set<std::string>{"kkkkkk...........kkk.hhhhhh.."});
    editor_->txt_edit->setText("End ; done");
    QCoreApplication::processEvents();
    painting.looks.clear();
    editor_->FormatBox();
    QCoreApplication::processEvents();
    EXPECT_EQ(painting.looks, std::set<std::string>{"kkk.hhhhhh"});
}

TEST_F(FrEdit, AFileThatCannotBeReadIsToldAndItsWindowGoes) {
    for (const std::string& path : {temp_.path("missing.ini"), temp_.folder("folder"), std::string()}) {
        MessageBoxReader boxes;
        boxes.onBox = [] {
            EXPECT_FALSE(QGuiApplication::overrideCursor()) << "nothing is under way while the user reads it";
            qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept();
        };
        newEditor();
        editor_->Openfile(path);
        ASSERT_EQ(boxes.messages().size(), 1);
        const QString& message = boxes.messages().first();
        EXPECT_TRUE(message.startsWith(QStringLiteral("Blockhouse|") + displayed(path)));
        EXPECT_TRUE(message.contains(QString::fromStdString(readWholeFile(path).error().cause)));
        EXPECT_EQ(host_.log, "1/10 closed ");
        deleteWhatWasClosed();
        EXPECT_FALSE(editor_);
    }
    // The whole program may end while the message is read.
    MessageBoxReader boxes;
    boxes.onBox = [this] { delete area_; };
    newEditor();
    editor_->Openfile(temp_.path("missing.ini"));
    EXPECT_FALSE(area_);
}

TEST_F(FrEdit, EveryByteIsShown) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    bytes += "\n\n\r\r\r\nEnd" + std::string(3, '\0');
    open(bytes);
    EXPECT_EQ(editor_->Filetext, bytes);
    EXPECT_EQ(editor_->txt_edit->text(), editor_->Filetext);
}

TEST_F(FrEdit, AFileReplacedWhileItIsLoadedIsTheOldOneOrTheNewOne) {
    const std::string before = "Object Before ; old\r\n";
    const std::string after(100'000, ';');
    for (int step = 1; step <= progressSteps; ++step) {
        newEditor();
        host_.onProgress = [&] {
            if (host_.drawn == step)
                temp_.file("tank.ini", after);
        };
        open(before);
        EXPECT_EQ(editor_->Filetext, step == 1 ? after : before);
        EXPECT_EQ(editor_->txt_edit->text(), editor_->Filetext);
    }
}

class FrEditGoing : public FrEdit, public testing::WithParamInterface<bool> {
protected:
    void letGo() {
        if (GetParam())
            frame_->close();
        else
            delete frame_;
    }
};

TEST_P(FrEditGoing, AtAnyStepOfLoading) {
    const std::string path = temp_.file("tank.ini", "Object Alphaone\r\nEnd ; done\r\n");
    for (int step = 1; step <= progressSteps; ++step) {
        newEditor();
        host_.onProgress = [&] {
            if (host_.drawn == step)
                letGo();
        };
        editor_->Openfile(path);
        EXPECT_EQ(host_.drawn, step) << "nothing more is done";
        EXPECT_EQ(host_.log.ends_with("closed "), GetParam());
        deleteWhatWasClosed();
        EXPECT_FALSE(editor_);
    }
}

// So long a text that events are served in the middle of colouring it.
TEST_P(FrEditGoing, InTheMiddleOfColouring) {
    std::string text;
    for (int line = 0; line < 600'000; ++line)
        text += "End ;\r\n";
    open(text);
    bool highlighted = false;
    QTimer::singleShot(0, [this] { letGo(); });
    QObject::connect(editor_->txt_edit, &RichTextBox::changed, [&] { highlighted = true; });
    editor_->FormatBox();
    deleteWhatWasClosed();
    EXPECT_FALSE(editor_);
    EXPECT_FALSE(highlighted);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    QWidget another;
    EXPECT_TRUE(WindowUpdateLock(&another).isHeld());
}

INSTANTIATE_TEST_SUITE_P(Closed, FrEditGoing, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(Deleted, FrEditGoing, testing::Values(false));

TEST_F(FrEdit, ControlsFollowTheWindowsOuterSize) {
    frame_->showNormal();
    const auto geometry = [this](const char* name) {
        auto* control = editor_->findChild<QWidget*>(QLatin1String(name));
        EXPECT_TRUE(control && !control->accessibleName().isEmpty()) << name;
        return control ? control->geometry() : QRect();
    };
    EXPECT_EQ(editor_->sizeHint(), QSize(481, 376));
    frame_->resize(500, 400); // less 200 and 1500 twips
    EXPECT_EQ(geometry("txt_edit"), QRect(0, 56, 487, 300));
    EXPECT_EQ(geometry("List1"), QRect(244, 40, 244, 21)); // half of it
    EXPECT_EQ(geometry("Combo1"), QRect(0, 40, 237, 21));  // and 100 twips less
    EXPECT_EQ(geometry("Picture1"), QRect(0, editor_->height() - 9, editor_->width(), 9));
    EXPECT_EQ(geometry("thebar"), QRect(8, 0, 89, 9));
}

TEST_F(FrEdit, ControlsStayInsideAThickFrame) {
    class ThickFrame : public QProxyStyle {
        int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
            return metric == PM_MdiSubWindowFrameWidth ? 12 : QProxyStyle::pixelMetric(metric, option, widget);
        }
    } style;

    frame_->setStyle(&style);
    frame_->showNormal();
    frame_->resize(500, 400);
    EXPECT_LT(editor_->width(), 500 - 2 * 10);
    for (const QWidget* control : std::initializer_list<QWidget*>{editor_->txt_edit, editor_->List1})
        EXPECT_LE(control->geometry().right(), editor_->width()) << control->objectName().toStdString();
    frame_->setStyle(nullptr);
}

TEST_F(FrEdit, LayoutStopsAtTheFirstSizeThatCannotBe) {
    QWidget outside; // without a frame the outer size is the editor's own
    fr_edit editor(host_, &outside);
    outside.show();
    editor.resize(500, 400);
    ASSERT_EQ(editor.txt_edit->size(), QSize(487, 300));

    const struct {
        QSize size;
        QSize text;
        int listWidth;
        int comboWidth;
    } cases[] = {
        {{13, 500}, {487, 300}, 244, 237}, // 195 twips are too narrow
        {{14, 99}, {1, 300}, 244, 237},    // 1485 twips are too low
        {{14, 100}, {1, 0}, 1, 237},       // half the text box is less than 100 twips
        {{40, 100}, {27, 0}, 14, 7},
    };

    for (const auto& [size, text, listWidth, comboWidth] : cases) {
        editor.resize(size);
        EXPECT_EQ(editor.txt_edit->size(), text);
        EXPECT_EQ(editor.List1->width(), listWidth);
        EXPECT_EQ(editor.Combo1->width(), comboWidth);
    }
}

} // namespace
} // namespace blockhouse
