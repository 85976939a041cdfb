// Keys, saves, finding and jumping in big files opened in the real main window.
#include "app/Program.h"
#include "bench/generated_text.h"
#include "bench/measure.h"
#include "editor/fr_edit.h"
#include "platform/text/codepage.h"
#include "shell/Fr_main.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace {

using namespace blockhouse;

constexpr int runs = 7;

fr_edit& open(Program& program, const std::string& path) {
    for (QMdiSubWindow* window : program.fr_main().mdiArea()->subWindowList())
        delete window;
    program.openEditor(path);
    auto* editor = program.fr_main().findChild<fr_edit*>();
    paint(*editor->txt_edit);
    return *editor;
}

// From the key press to the painted text, typing assistance included, in milliseconds.
double keyTime(fr_edit& editor) {
    RichTextBox& box = *editor.txt_edit;
    box.setSelStart(box.textLength() / 2);
    box.scrollIntoView(box.selStart(), box.selStart());
    paint(box);

    struct Press {
        Qt::Key key;
        const char* text;
    };

    constexpr Press presses[] = {{Qt::Key_B, "b"},   {Qt::Key_O, "o"},       {Qt::Key_D, "d"},
                                 {Qt::Key_Y, "y"},   {Qt::Key_Space, " "},   {Qt::Key_Semicolon, ";"},
                                 {Qt::Key_X, "x"},   {Qt::Key_Return, "\r"}, {Qt::Key_E, "e"},
                                 {Qt::Key_Left, ""}, {Qt::Key_Backspace, ""}};
    std::vector<double> times;
    for (int round = 0; round < 60; ++round) {
        for (const Press& press : presses) {
            QKeyEvent event(QEvent::KeyPress, press.key, Qt::NoModifier, QLatin1String(press.text));
            times.push_back(1000 * secondsOf([&] {
                                QApplication::sendEvent(&box, &event);
                                QCoreApplication::processEvents(); // paints what the key changed
                            }));
        }
    }
    return quantile(times, 0.95);
}

double medianOf(const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run)
        times.push_back(secondsOf(work));
    return quantile(times, 0.5);
}

void copyAndSync(const std::string& from, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    const int file = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    for (std::size_t written = 0; written < bytes.size();) {
        const ssize_t part = write(file, bytes.data() + written, bytes.size() - written);
        if (part <= 0)
            std::exit(1);
        written += static_cast<std::size_t>(part);
    }
    fsync(file);
    close(file);
}

// The obvious way to look for a text in any case: every byte lowered and compared, in one loop.
std::size_t plainScan(const std::string& bytes, const std::string& loweredNeedle) {
    static const std::array<char, 256> lowered = [] {
        std::array<char, 256> table{};
        for (std::size_t byte = 0; byte < table.size(); ++byte)
            table[byte] = codepage::lowered(static_cast<char>(byte));
        return table;
    }();
    for (std::size_t at = 0; at + loweredNeedle.size() <= bytes.size(); ++at) {
        std::size_t same = 0;
        while (same < loweredNeedle.size() &&
               lowered[static_cast<unsigned char>(bytes[at + same])] == loweredNeedle[same])
            ++same;
        if (same == loweredNeedle.size())
            return at;
    }
    return bytes.size();
}

void measureTenMegabytes(Program& program, const std::string& folder, const std::string& path, double& keyAtTen) {
    fr_edit& editor = open(program, path);
    program.fr_main().jumps.add("Armor");
    program.fr_main().jumps.add("Body");
    int block = 0;
    row("choosing a block in 10 MB, ms", 1000 * medianOf([&] {
                                             editor.List1->setCurrentIndex((block += 997) % editor.List1->count());
                                             paint(*editor.txt_edit);
                                         }),
        50);
    row("choosing a setting in 10 MB, ms", 1000 * medianOf([&] {
                                               Q_EMIT editor.Combo1->activated(0);
                                               paint(*editor.txt_edit);
                                           }),
        50);
    const double copied = medianOf([&] { copyAndSync(path, folder + "/copy.ini"); });
    row("save of 10 MB, over copying and syncing the same bytes", medianOf([&] { editor.Save(); }) / copied, 2);
    row("where the caret is, after a change, in 10 MB, ms", 1000 * medianOf([&] {
                                                                Q_EMIT editor.txt_edit->changed();
                                                                Q_EMIT editor.txt_edit->looksDifferent();
                                                            }),
        1);
    keyAtTen = keyTime(editor);
    row("a key in the middle of 10 MB, 95 of 100, ms", keyAtTen, 2);
}

void measureHundredMegabytes(Program& program, const std::string& path, double keyAtTen) {
    fr_edit& editor = open(program, path);
    const std::string needle = "ONLYATTHEVERYEND";
    std::string bytes = editor.txt_edit->text() + needle;
    editor.txt_edit->setText(bytes);
    CaretPosition found = 0;
    const double ours = medianOf([&] { found = editor.txt_edit->find("onlyattheveryend", 0); });
    if (found != bytes.size() - needle.size())
        std::exit(1);
    std::size_t scanned = 0;
    const double plain = medianOf([&] { scanned = plainScan(bytes, "onlyattheveryend"); });
    if (scanned != static_cast<std::size_t>(found))
        std::exit(1);
    row("find at the end of 100 MB, over a plain folded scan", ours / plain, 2);
    const double key = keyTime(editor);
    row("a key in the middle of 100 MB, 95 of 100, ms", key, 2);
    std::printf("a key at 100 MB over one at 10 MB: %.2f\n", key / keyAtTen);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const std::string root = folder.path().toStdString();
    for (const std::size_t megabytes : {10, 100}) {
        std::ofstream file(root + "/" + std::to_string(megabytes) + ".ini", std::ios::binary);
        file << generatedText({.megabytes = megabytes});
    }
    Program program(root);
    program.fr_main().show();
    program.fr_main().resize(1000, 700);
    double keyAtTen = 0;
    measureTenMegabytes(program, root, root + "/10.ini", keyAtTen);
    measureHundredMegabytes(program, root + "/100.ini", keyAtTen);
    return outcome();
}
