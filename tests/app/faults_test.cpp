// What the user is told, and what is on the disk, when the system fails the program.
#include "app/Program.h"
#include "editor/fr_edit.h"
#include "findref/fr_findref.h"
#include "placement/Form2.h"
#include "platform/system/files.h"
#include "platform/widgets/NoticeArea.h"
#include "shell/Fr_main.h"
#include "tests/support/MemoryFault.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/SystemFault.h"
#include "tests/support/TempFolder.h"
#include "tools/Fr_Directory.h"
#include "tools/Fr_options.h"

#include <gtest/gtest.h>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <cerrno>
#include <memory>

namespace blockhouse {
namespace {

const std::string text = "Object Alphaone\r\nEnd\r";
const std::string aiText = "SkirmishBuildList North\r\n  Structure CommandCenter\r\n"
                           "    Location = X:100.00 Y:100.00\r\n  End\r\nEnd\r\n";

class Faults : public testing::Test {
protected:
    void SetUp() override {
        file_ = temp_.file("data/one.ini", text);
        temp_.file("data/two.ini", text);
        aiFile_ = temp_.file("data/aidata.ini", aiText);
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        temp_.file("jumps.lst", "Armor\r\n");
    }

    Program& program() {
        if (!program_) {
            program_ = std::make_unique<Program>(temp_.path());
            program_->fr_main().show();
        }
        return *program_;
    }

    [[nodiscard]] static std::string bytesOf(const std::string& path) { return readWholeFile(path).value(); }

    static void deleteWhatWasClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    static QString told(const std::string& path, const char* what, const char* cause) {
        return QStringLiteral("Blockhouse|%1\n%2\n%3")
            .arg(QString::fromStdString(path), QLatin1String(what), QLatin1String(cause));
    }

    TempFolder temp_;
    std::string file_;
    std::string aiFile_;
    MessageBoxReader boxes_;
    std::unique_ptr<Program> program_;
};

// Each of the large allocations on the way fails in turn: the file's bytes, the text in the box, its styles.
TEST_F(Faults, AFileThatMemoryRunsOutForIsTold) {
    constexpr std::size_t large = 3'000'000;
    std::string bytes;
    while (bytes.size() < large)
        bytes += "Object Alphaone ; one\r\nEnd\r\n";
    const std::string path = temp_.file("large.ini", bytes);
    const QPointer<fr_edit> other = program().openEditor(file_);
    QTest::keyClicks(other->txt_edit, "typed");
    int failed = 0;
    for (int spared = 0; failed == spared; ++spared) {
        const MemoryFault fault(large, spared);
        fr_edit* opened = program().openEditor(path);
        if (MemoryFault::failures() == 0)
            break;
        EXPECT_FALSE(opened) << spared;
        ++failed;
    }
    EXPECT_GE(failed, 3);
    EXPECT_EQ(boxes_.messages(), QStringList(failed, told(path, "could not be opened.", "Cannot allocate memory")));
    deleteWhatWasClosed();
    ASSERT_TRUE(other);
    EXPECT_EQ(other->txt_edit->text(), "typed" + text) << "other texts are as they were";
}

struct WriteFault {
    const char* call;
    int error;
    const char* cause;
};

const WriteFault writeFaults[] = {
    {"write", ENOSPC, "No space left on device"}, {"write", EIO, "Input/output error"},
    {"fsync", EIO, "Input/output error"},         {"create", ENOENT, "No such file or directory"},
    {"rename", EIO, "Input/output error"},        {"stat", EACCES, "Permission denied"},
};

TEST_F(Faults, ASaveThatFailsIsToldAndTheTextCanBeSavedAgain) {
    const QPointer<fr_edit> editor = program().openEditor(file_);
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor->txt_edit, "; mine ");
    QStringList expected;
    for (const WriteFault& each : writeFaults) {
        const SystemFault fault(each.call, each.error);
        editor->Save();
        expected.append(told(file_, "could not be saved. The text is still in the editor.", each.cause));
    }
    EXPECT_EQ(boxes_.messages(), expected);
    EXPECT_EQ(bytesOf(file_), text);
    editor->Save();
    EXPECT_EQ(bytesOf(file_), "; mine " + text);
    EXPECT_EQ(boxes_.messages(), expected);
}

TEST_F(Faults, APlacementFileThatCannotBeSavedOrOpenedIsToldAndTheWorkStays) {
    Form2& form = program().form2();
    form.Openfile(aiFile_);
    form.Filetext += "; mine";
    QStringList expected;
    for (const WriteFault& each : writeFaults) {
        const SystemFault fault(each.call, each.error);
        form.save();
        expected.append(told(aiFile_, "could not be saved.", each.cause));
    }
    EXPECT_EQ(boxes_.messages(), expected);
    EXPECT_EQ(bytesOf(aiFile_), aiText);
    {
        const SystemFault fault("read", EIO);
        form.Openfile(file_);
        expected.append(told(file_, "could not be opened.", "Input/output error"));
    }
    EXPECT_EQ(boxes_.messages(), expected);
    EXPECT_EQ(form.Filepath, aiFile_);
    EXPECT_EQ(form.sides().size(), 1U);
    form.save();
    EXPECT_EQ(bytesOf(aiFile_), aiText + "; mine");
}

TEST_F(Faults, AFileThatCannotBeOpenedIsToldAndLeavesNoWindow) {
    const QPointer<fr_edit> other = program().openEditor(temp_.path("data/two.ini"));
    for (const char* call : {"open", "fstat", "read"}) {
        const SystemFault fault(call, EIO);
        program().openEditor(file_);
        EXPECT_EQ(boxes_.messages().last(), told(file_, "could not be opened.", "Input/output error")) << call;
    }
    temp_.file("data/one.ini", "Object A\r\n" + std::string(5'000'000, 'x') + "\r\nEnd\r\n");
    program().openEditor(file_);
    EXPECT_EQ(boxes_.messages().last(), told(file_, "could not be opened.", "A line of it is too long"));
    deleteWhatWasClosed();
    EXPECT_EQ(program().fr_main().mdiArea()->subWindowList().size(), 1);
    EXPECT_EQ(program().fr_main().Toolbar1->actions().size(), 1);
}

// The last to save wins: what the editor holds is written whole, whatever became of the file meanwhile.
TEST_F(Faults, AFileReplacedOrRemovedMeanwhileIsWrittenWhole) {
    const QPointer<fr_edit> editor = program().openEditor(file_);
    temp_.file("data/one.ini", std::string(100'000, 'x'));
    editor->Save();
    EXPECT_EQ(bytesOf(file_), text);
    std::filesystem::remove(file_);
    editor->Save();
    EXPECT_EQ(bytesOf(file_), text);
    EXPECT_EQ(boxes_.messages(), QStringList());
}

TEST_F(Faults, ListFilesThatCannotBeReadGiveEmptyListsAndStayAsTheyAre) {
    {
        const SystemFault fault("read", EIO);
        EXPECT_EQ(program().fr_main().jumps.count(), 0);
        EXPECT_EQ(program().Dirs.count(), 0);
    }
    EXPECT_EQ(boxes_.messages(), QStringList());
    EXPECT_EQ(bytesOf(temp_.path("Dirs.lst")), temp_.path("data") + "\r\n");
    EXPECT_EQ(bytesOf(temp_.path("jumps.lst")), "Armor\r\n");
}

TEST_F(Faults, ListFilesThatCannotBeWrittenStayAsTheyAreAndTheListsHoldForThisRun) {
    Fr_options& options = program().fr_options();
    options.txt_enter->setText(QStringLiteral("Speed"));
    options.Command1->click();
    Fr_Directory& directories = program().fr_directory();
    directories.show();
    ASSERT_TRUE(directories.Dir1->walkTo(temp_.path()));
    directories.Command1->click();
    {
        const SystemFault fault("write", ENOSPC);
        options.parentWidget()->close();
        directories.close();
    }
    EXPECT_EQ(boxes_.messages(),
              QStringList({QStringLiteral("Blockhouse|Saved"), QStringLiteral("Blockhouse|Directory's Saved")}));
    EXPECT_EQ(bytesOf(temp_.path("jumps.lst")), "Armor\r\n");
    EXPECT_EQ(bytesOf(temp_.path("Dirs.lst")), temp_.path("data") + "\r\n");
    EXPECT_EQ(program().fr_main().jumps.count(), 2);
    EXPECT_EQ(program().Dirs.count(), 2);
    EXPECT_EQ(program().fr_main().Tree1->model()->rowCount(), 2) << "the tree takes it up";
}

TEST_F(Faults, ADirectoryThatCannotBeListedIsLeftOutOfTheTree) {
    const SystemFault fault("opendir", EACCES);
    EXPECT_EQ(program().fr_main().Tree1->model()->rowCount(), 0);
    EXPECT_EQ(boxes_.messages(), QStringList());
}

TEST_F(Faults, ASearchEndsAtTheFirstFailureAndKeepsItsHits) {
    fr_findref& search = program().fr_findref();
    const auto hits = [&] {
        search.findRef("Object");
        return search.List1->model()->rowCount();
    };
    const auto notice = [&] { return search.notices->textOf(QStringLiteral("endedEarly")); };
    EXPECT_EQ(hits(), 2);
    for (const char* call : {"open", "read"}) {
        // The first file, which has no hit, and the second are read to their ends: two reads and an empty one each.
        const bool opening = std::string_view(call) == "open";
        const SystemFault fault(call, EIO, opening ? 2 : 4);
        EXPECT_EQ(hits(), 1) << call;
        EXPECT_EQ(notice(), QStringLiteral("The search ended early. %1: Input/output error")
                                .arg(QString::fromStdString(temp_.path("data/two.ini"))));
        EXPECT_EQ(search.Label1->toolTip(), notice());
    }
    {
        const SystemFault fault("opendir", ENOENT);
        EXPECT_EQ(hits(), 0);
        EXPECT_EQ(notice(), QStringLiteral("The search ended early. %1: No such file or directory")
                                .arg(QString::fromStdString(temp_.path("data"))));
    }
    EXPECT_EQ(hits(), 2);
    EXPECT_EQ(notice(), QString()) << "this one went to its end";
    EXPECT_EQ(search.Label1->toolTip(), QString());
    EXPECT_EQ(boxes_.messages(), QStringList());
}

} // namespace
} // namespace blockhouse
