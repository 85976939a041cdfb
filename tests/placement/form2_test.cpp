#include "placement/Canvas.h"
#include "placement/Form2.h"
#include "placement/location_line.h"
#include "platform/system/files.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/NoticeArea.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include <map>
#include <memory>
#include <random>

namespace blockhouse {
namespace {

std::string structure(const std::string& name, const std::string& location) {
    return "  Structure " + name + "\r\n    " + location + "\r\n  End\r\n";
}

const std::string twoSides =
    "SkirmishBuildList North\r\n" + structure("CommandCenter", "Location = X:100.00 Y:100.00") +
    structure("SupplyDepot", "Location = X:500.50 Y:250.25") +
    structure("StingerNest", "Location = X:110.00 Y:110.00") + "End\r\nSkirmishBuildList South\r\n" +
    structure("PowerMill", "Location = X:900.00 Y:900.00") + "End\r\n";

class PlacementEditor : public testing::Test {
protected:
    void open(const std::string& text) {
        path_ = temp_.file("data/AIdata.ini", text);
        form_->Openfile(path_);
    }

    // Where a point of the canvas lies in the widget: 0.309 pixels a unit, inside a border of 2.
    static QPoint at(double x, double y) { return QPointF(2 + x * 0.309, 2 + y * 0.309).toPoint(); }

    void mouse(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, place, form_->Picture1->mapToGlobal(place), button, held, Qt::NoModifier);
        QApplication::sendEvent(form_->Picture1, &event);
    }

    void press(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonPress, place, button, button);
    }

    void move(QPointF place, Qt::MouseButtons held) { mouse(QEvent::MouseMove, place, Qt::NoButton, held); }

    void release(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
        mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
    }

    [[nodiscard]] QColor colourAt(QPoint place) const { return form_->Picture1->grab().toImage().pixelColor(place); }

    [[nodiscard]] std::string structures() const {
        std::string names;
        for (int i = 0; i < form_->Combo2->count(); ++i)
            names += (i == form_->Combo2->currentIndex() ? "*" : "") + form_->Combo2->itemText(i).toStdString() + " ";
        return names;
    }

    TempFolder temp_;
    std::string path_;
    std::unique_ptr<Form2> form_ = std::make_unique<Form2>();
};

TEST_F(PlacementEditor, ShowsTheSidesOfAFileAndTheStructuresOfTheChosenOne) {
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("Building tool"));
    EXPECT_FALSE(form_->findChild<QAction*>(QStringLiteral("m_save"))->isEnabled());
    open(twoSides);
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("/AIdata.ini"));
    EXPECT_EQ(form_->Combo1->count(), 2);
    EXPECT_EQ(form_->Combo1->currentIndex(), -1);
    EXPECT_EQ(structures(), "");

    form_->Combo1->setCurrentIndex(0);
    EXPECT_EQ(structures(), "CommandCenter SupplyDepot StingerNest ");
    EXPECT_EQ(colourAt(at(110, 110) + QPoint(4, 8)), QColor(Qt::red)) << "the later mark lies above the earlier one";
    EXPECT_EQ(colourAt(at(500.5, 250.25) + QPoint(4, 8)), QColor(0, 255, 0));
    EXPECT_EQ(colourAt(at(500.5, 250.25)), QColor(128, 128, 128)) << "its outline";
    const QColor ground = colourAt(at(900, 900) + QPoint(4, 8));
    form_->Combo1->setCurrentIndex(1);
    EXPECT_EQ(structures(), "PowerMill ");
    EXPECT_EQ(form_->Combo1->toolTip(), QStringLiteral("South"));
    EXPECT_EQ(colourAt(at(900, 900) + QPoint(4, 8)), QColor(Qt::blue));
    form_->Combo2->setCurrentIndex(0);
    EXPECT_EQ(colourAt(at(500.5, 250.25) + QPoint(4, 8)), ground);

    open("SkirmishBuildList West\r\n");
    EXPECT_EQ(form_->Combo1->count(), 1);
    EXPECT_EQ(structures(), "");
    EXPECT_EQ(colourAt(at(900, 900) + QPoint(4, 8)), ground) << "nothing of the file before is left";
    for (const DropDownList* list : {form_->Combo1, form_->Combo2})
        EXPECT_EQ(list->toolTip(), list->accessibleName());
}

TEST_F(PlacementEditor, ADropRewritesTheLocationLineAndNothingElse) {
    open(twoSides);
    form_->Combo1->setCurrentIndex(0);
    press(at(110, 110));
    EXPECT_EQ(structures(), "*CommandCenter SupplyDepot StingerNest ") << "of two near ones the first";
    move({158, 80}, Qt::LeftButton);
    EXPECT_EQ(form_->Label2->text(), QStringLiteral("x: 504.85 y: 252.43"));
    release({-2, 311}); // the pointer may leave the canvas
    EXPECT_EQ(structures(), "*CommandCenter SupplyDepot StingerNest ");
    EXPECT_EQ(form_->log1->toPlainText(), QStringLiteral("Location = X:-12.94 Y:1000.00\n"));
    std::string expected = twoSides;
    expected.replace(expected.find("Location"), 28, "Location = X:-12.94 Y:1000.00");
    EXPECT_EQ(form_->Filetext, expected);
    EXPECT_EQ(readWholeFile(path_).value(), twoSides) << "nothing is written yet";

    // A later entry's position follows the text's new length.
    form_->Combo2->setCurrentIndex(2);
    press({300, 10}, Qt::RightButton);
    release({2, 2}, Qt::RightButton);
    expected.replace(expected.find("Location = X:110"), 28, "Location = X:0.00 Y:0.00");
    EXPECT_EQ(form_->Filetext, expected);
    EXPECT_EQ(form_->board().marks()[2].topLeft.x.value, 110) << "only the left button drags";
    form_->findChild<QAction*>(QStringLiteral("m_save"))->trigger();
    EXPECT_EQ(readWholeFile(path_).value(), expected);
}

TEST_F(PlacementEditor, AThousandDropsChangeLocationsOnlyAndAreFoundAgain) {
    const auto besidesLocations = [](std::string text) {
        for (std::size_t at = 0; (at = text.find("Location = X:", at)) != std::string::npos; ++at)
            text.erase(at + 13, text.find('\r', at) - at - 13);
        return text;
    };
    constexpr int sides = 3, structuresOfSide = 30;
    std::string text;
    std::map<std::string, std::string> locations; // of each structure, as in the log
    for (int side = 0; side < sides; ++side) {
        text += "SkirmishBuildList Side" + std::to_string(side) + "\r\n";
        for (int i = 0; i < structuresOfSide; ++i) {
            const std::string name = "Bunker" + std::to_string(side) + "_" + std::to_string(i);
            text += structure(name, locations[name] = "Location = X:111.50 Y:" + std::to_string(i) + ".00");
        }
        // Room for the drift of the sides' bounds, which stay as they were when the file was opened.
        text += "End\r\n" + std::string(4'000, ';') + "\r\n";
    }
    open(text);
    std::mt19937 random(20261123);
    for (int drop = 0; drop < 1'000; ++drop) {
        if (drop % 40 == 0)
            form_->Combo1->setCurrentIndex(drop / 40 % sides);
        ASSERT_EQ(form_->Combo2->count(), structuresOfSide);
        form_->Combo2->setCurrentIndex(static_cast<int>(random() % structuresOfSide));
        release({static_cast<double>(random() % 400) - 50, static_cast<double>(random() % 400) - 50});
        const QString line = form_->log1->document()->findBlockByNumber(drop).text();
        locations[form_->Combo2->currentText().toStdString()] = line.toStdString();
    }
    EXPECT_EQ(besidesLocations(form_->Filetext), besidesLocations(text));
    form_->save();
    EXPECT_EQ(readWholeFile(path_).value(), form_->Filetext);

    form_->Openfile(path_);
    for (int side = 0; side < sides; ++side) {
        form_->Combo1->setCurrentIndex(side);
        ASSERT_EQ(form_->Combo2->count(), structuresOfSide);
        for (int i = 0; i < structuresOfSide; ++i)
            EXPECT_EQ(locationLine(form_->board().marks()[static_cast<std::size_t>(i)].topLeft),
                      locations[form_->Combo2->itemText(i).toStdString()]);
    }
}

TEST_F(PlacementEditor, LabelsShowWhatIsChosenOrUnderThePointer) {
    const auto labels = [this] {
        std::string shown;
        for (const MarkLabel& label : form_->board().labels())
            shown += label.visible ? label.name + " " : "";
        return shown;
    };
    open(twoSides);
    form_->Combo1->setCurrentIndex(0);
    EXPECT_EQ(labels(), "");
    const QImage without = form_->Picture1->grab().toImage();
    form_->Combo2->setCurrentIndex(1);
    EXPECT_EQ(labels(), "SupplyDepot ");
    EXPECT_NE(form_->Picture1->grab().toImage(), without);
    move(at(700, 700), Qt::NoButton);
    EXPECT_EQ(labels(), "");
    EXPECT_EQ(form_->Picture1->grab().toImage(), without);
    move(at(500, 250), Qt::NoButton);
    EXPECT_EQ(labels(), "SupplyDepot ");
}

TEST_F(PlacementEditor, FailuresAreToldOneByOneUntilTheBoxIsDismissed) {
    std::string text = "SkirmishBuildList North\r\n";
    for (int i = 1; i <= 3; ++i)
        text += structure("EndlessWall" + std::to_string(i), "Location = X:10.00 Y:10.00");
    open(text + structure("Barracks", "Location = X:ten Y:20.00") +
         structure("Airfield", "Location = X:50.00 Y:50.00"));
    {
        MessageBoxReader boxes;
        QTest::keyClick(form_->Combo1, Qt::Key_Down);
        EXPECT_EQ(boxes.messages().join(' ').toStdString(),
                  "Blockhouse|Could not find location for EndlessWall1:Skipping "
                  "Blockhouse|Could not find location for EndlessWall2:Skipping "
                  "Blockhouse|Could not find location for EndlessWall3:Skipping Blockhouse|13");
    }
    QTest::qWait(0);
    for (const bool byEscape : {true, false}) {
        MessageBoxReader boxes;
        boxes.onBox = [byEscape] {
            if (byEscape)
                QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            else
                QApplication::activeModalWidget()->close();
        };
        Q_EMIT form_->Combo1->activated(0); // the same side once more
        EXPECT_EQ(boxes.messages().size(), 1) << byEscape;
        EXPECT_EQ(structures(), "Airfield ");
    }
}

TEST_F(PlacementEditor, AFileThatCannotBeReadOrWrittenIsToldAndLosesNothing) {
    open(twoSides);
    form_->Combo1->setCurrentIndex(1);
    MessageBoxReader boxes;
    const std::string missing = temp_.path("missing/aidata.ini");
    form_->Openfile(missing);
    ASSERT_EQ(boxes.messages().size(), 1);
    EXPECT_TRUE(boxes.messages()[0].contains(QString::fromStdString(missing)));
    EXPECT_EQ(form_->windowTitle(), QStringLiteral("/AIdata.ini"));
    EXPECT_EQ(structures(), "PowerMill ");
    std::filesystem::remove_all(temp_.path("data"));
    form_->save();
    ASSERT_EQ(boxes.messages().size(), 2);
    EXPECT_TRUE(boxes.messages()[1].contains(QString::fromStdString(path_)));
    EXPECT_EQ(form_->Filetext, twoSides);
}

TEST_F(PlacementEditor, TheCoordinatesStandInTheStripsCornerBesideItsFrame) {
    form_->show();
    move(at(450, 888), Qt::NoButton);
    EXPECT_EQ(form_->Label2->parentWidget(), form_->Picture2);
    EXPECT_EQ(form_->Label2->pos(), QPoint(0, 0));
    EXPECT_EQ(form_->Picture2->geometry(), QRect(0, form_->height() - 21, form_->width(), 21));
    const QImage written = form_->Picture2->grab().toImage();
    form_->Label2->hide();
    const QImage empty = form_->Picture2->grab().toImage();
    ASSERT_NE(written, empty);
    const QRgb ground = empty.pixel(empty.width() / 2, empty.height() / 2);
    int framed = 0;
    for (int x = 0; x < empty.width(); ++x)
        for (int y = 0; y < empty.height(); ++y) {
            const bool isFrame = empty.pixel(x, y) != ground;
            framed += isFrame ? 1 : 0;
            EXPECT_TRUE(!isFrame || written.pixel(x, y) == empty.pixel(x, y)) << "text at " << x << ", " << y;
        }
    EXPECT_GT(framed, empty.width() / 2);
}

// Also run as on a very low screen.
TEST_F(PlacementEditor, IsNoLargerThanItsScreenAndScrollsWhatDoesNotFit) {
    const QSize screen = form_->screen()->availableGeometry().size();
    open(twoSides);
    EXPECT_LT(form_->height(), screen.height()) << "there is room for a title, too";
    EXPECT_LT(form_->width(), screen.width());
    constexpr int titleAtMost = 60;
    EXPECT_GE(form_->height(), std::min(form_->sizeHint().height(), screen.height() - titleAtMost));
    form_->resize(screen.boundedTo({300, 200}));
    auto* room = form_->findChild<QScrollArea*>();
    ASSERT_TRUE(room);
    ASSERT_TRUE(QTest::qWaitFor([room] { return room->verticalScrollBar()->maximum() > 0; }));
    EXPECT_TRUE(form_->Text1->visibleRegion().isEmpty());
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    form_->Combo1->setFocus();
    QTest::keyClick(form_->Combo1, Qt::Key_Tab);
    QTest::keyClick(form_->Combo2, Qt::Key_Tab);
    ASSERT_TRUE(form_->Text1->hasFocus());
    EXPECT_FALSE(form_->Text1->visibleRegion().isEmpty()) << "it follows the focus";
    room->verticalScrollBar()->setValue(room->verticalScrollBar()->maximum());
    room->horizontalScrollBar()->setValue(0);
    EXPECT_TRUE(form_->Picture1->visibleRegion().contains(at(20, 990))) << "the canvas's lower end";
    form_->resize(600, 500);
    EXPECT_TRUE(QTest::qWaitFor([room] { return !room->verticalScrollBar()->isVisible(); }));
}

TEST_F(PlacementEditor, TheLogComesAndGoes) {
    open(twoSides);
    EXPECT_FALSE(form_->Frame1->isVisible());
    form_->findChild<QAction*>(QStringLiteral("m_linelog"))->trigger();
    EXPECT_TRUE(form_->Frame1->isVisible());
    QTest::mouseClick(form_->Command1, Qt::LeftButton);
    EXPECT_FALSE(form_->Frame1->isVisible());
}

TEST_F(PlacementEditor, DropsAreTakenBackAndDoneAgain) {
    open(twoSides);
    const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers held = Qt::ControlModifier) {
        form_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
        QTest::keyClick(form_->Combo2, pressed, held);
    };
    const auto drag = [&](QPointF from, QPointF to) {
        press(from);
        move(to, Qt::LeftButton);
        release(to);
    };
    const auto hasDot = [&] { return !form_->windowIcon().isNull(); };
    form_->Combo1->setCurrentIndex(0);
    const CanvasPoint first = form_->board().marks()[0].topLeft;
    drag(at(110, 110), {158, 80});
    const CanvasPoint dropped = form_->board().marks()[0].topLeft;
    const std::string once = form_->Filetext;
    const QString log = form_->log1->toPlainText();
    EXPECT_EQ(form_->labelWritten->text(), QStringLiteral("CommandCenter: X:504.85 Y:252.43"));
    EXPECT_EQ(
        form_->labelWritten->toolTip(),
        QStringLiteral("Written into the text: CommandCenter: Location = X:504.85 Y:252.43. Ctrl+Z takes it back."));
    EXPECT_TRUE(hasDot());
    form_->Combo1->setCurrentIndex(1);
    drag(at(900, 900), {20, 20});
    const std::string twice = form_->Filetext;

    key(Qt::Key_Z);
    EXPECT_EQ(form_->Filetext, once);
    EXPECT_EQ(form_->board().marks()[0].topLeft, (CanvasPoint{{900}, {900}}));
    key(Qt::Key_Z);
    EXPECT_EQ(form_->Filetext, twoSides);
    EXPECT_EQ(form_->log1->toPlainText(), QString());
    EXPECT_EQ(form_->Combo1->currentIndex(), 0) << "the side whose structure went back";
    EXPECT_EQ(structures(), "*CommandCenter SupplyDepot StingerNest ");
    EXPECT_EQ(form_->board().marks()[0].topLeft, first);
    EXPECT_FALSE(hasDot());
    key(Qt::Key_Z);
    EXPECT_EQ(form_->Filetext, twoSides) << "nothing left to take back";

    key(Qt::Key_Y);
    EXPECT_EQ(form_->Filetext, once);
    EXPECT_EQ(form_->board().marks()[0].topLeft, dropped);
    EXPECT_EQ(form_->log1->toPlainText(), log);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(form_->Filetext, twice);
    form_->save();
    EXPECT_FALSE(hasDot());
    key(Qt::Key_Z);
    EXPECT_TRUE(hasDot()) << "the file holds the later text";
    open(twoSides);
    EXPECT_FALSE(hasDot());
    key(Qt::Key_Y);
    EXPECT_EQ(form_->Filetext, twoSides) << "another file, other drops";
}

TEST_F(PlacementEditor, TheLogLeavesTheKeysOfUndoToTheWindow) {
    open(twoSides);
    form_->Combo1->setCurrentIndex(0);
    press(at(110, 110));
    move({158, 80}, Qt::LeftButton);
    release({158, 80});
    const std::string dropped = form_->Filetext;
    form_->findChild<QAction*>(QStringLiteral("m_linelog"))->trigger();
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    form_->log1->setFocus();
    QTest::keyClick(form_->log1, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form_->Filetext, twoSides);
    QTest::keyClick(form_->log1, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(form_->Filetext, dropped);
    form_->log1->setPlainText(QStringLiteral("a remark that is longer than the line which that drop wrote"));
    form_->undo();
    EXPECT_EQ(form_->log1->toPlainText(), QStringLiteral("a remark that is longer than the line which that drop wrote"))
        << "only its own lines are taken out";
}

TEST_F(PlacementEditor, AFileThatOthersChangedIsToldWhenTheWindowComesToTheFront) {
    open(twoSides);
    const auto comeToTheFront = [&] {
        QEvent front(QEvent::WindowActivate);
        QApplication::sendEvent(form_.get(), &front);
        return form_->notices->textOf(QStringLiteral("fileChanged")).toStdString();
    };
    EXPECT_EQ(comeToTheFront(), "");
    temp_.file("data/AIdata.ini", "others");
    EXPECT_NE(comeToTheFront().find("was changed on the disk"), std::string::npos);
    EXPECT_FALSE(form_->windowIcon().isNull()) << "the dot";
    form_->notices->dismiss();
    EXPECT_EQ(comeToTheFront(), "") << "told once";
    ASSERT_EQ(std::remove(path_.c_str()), 0);
    EXPECT_NE(comeToTheFront().find("no longer on the disk"), std::string::npos);
    form_->save();
    EXPECT_EQ(comeToTheFront(), "");
    ASSERT_EQ(std::remove(path_.c_str()), 0);
    QSignalSpy left(form_.get(), &Form2::unsavedDropsLeft);
    form_->close();
    EXPECT_EQ(left.count(), 1) << "nobody else has this text now";
    form_->save();
    EXPECT_EQ(comeToTheFront(), "");
    EXPECT_TRUE(form_->windowIcon().isNull());
}

TEST_F(PlacementEditor, NothingIsTakenBackWhileAMarkIsHeld) {
    open(twoSides);
    form_->Combo1->setCurrentIndex(0);
    press(at(110, 110));
    release({158, 80});
    const std::string dropped = form_->Filetext;
    press({158, 80});
    form_->undo();
    EXPECT_EQ(form_->Filetext, dropped);
    release({158, 80});
    form_->undo();
    form_->undo();
    EXPECT_EQ(form_->Filetext, twoSides);
}

TEST_F(PlacementEditor, UnreadableLocationsStayNamedBesideTheirMessages) {
    MessageBoxReader boxes;
    open("SkirmishBuildList North\r\n" + structure("SupplyDepot", "Location = X:far Y:1") +
         structure("CommandCenter", "Location = X:100.00 Y:100.00") + "End\r\n" + twoSides);
    form_->Combo1->setCurrentIndex(0);
    EXPECT_EQ(boxes.messages(), QStringList(QStringLiteral("Blockhouse|13")));
    const auto told = [&] { return form_->notices->textOf(QStringLiteral("unreadable")).toStdString(); };
    EXPECT_EQ(told(), "The location cannot be read of SupplyDepot (line 2)");
    const auto* room = form_->findChild<QScrollArea*>();
    EXPECT_LE(room->viewport()->mapTo(form_.get(), QPoint(0, room->viewport()->height())).y(),
              form_->notices->geometry().top())
        << "no mark is covered";
    form_->Combo1->setCurrentIndex(1);
    EXPECT_EQ(told(), "");
    form_->Combo1->setCurrentIndex(0);
    press(at(100, 100));
    release({158, 80});
    form_->Combo1->setCurrentIndex(1);
    const auto before = boxes.messages().size();
    form_->undo();
    EXPECT_EQ(form_->Combo1->currentIndex(), 0);
    EXPECT_EQ(boxes.messages().size(), before + 1) << "once for the side that comes up";
}

TEST_F(PlacementEditor, ASaveKeepsWhatOthersWrote) {
    open(twoSides);
    form_->Combo1->setCurrentIndex(0);
    temp_.file("data/AIdata.ini", "others");
    form_->save();
    EXPECT_EQ(readWholeFile(path_).value(), twoSides);
    const std::string kept = form_->notices->textOf(QStringLiteral("backup")).toStdString();
    const auto names = fileNamesIn(temp_.path("data"), "*.bak").value();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(readWholeFile(temp_.path("data/" + names.front())).value(), "others");
    EXPECT_NE(kept.find(names.front()), std::string::npos);
}

} // namespace
} // namespace blockhouse
