// Opens generated files in the real main window and prints times and memory as ratios taken in one run.
//
//   open_bench              generates the files, runs itself once per measurement, prints the table
//   open_bench --runs N     measurements per figure; the median counts (9)
//
// One process per measurement: peak memory is a process's own, and a second opening would find a warm heap.
#include "app/Program.h"
#include "bench/generated_text.h"
#include "bench/measure.h"
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "editor/OpeningColours.h"
#include "platform/system/files.h"
#include "shell/Fr_main.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>

namespace {

using namespace blockhouse;

double megabytesOf(const char* field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(field))
            return std::stod(line.substr(line.find_first_of("0123456789"))) * 1024 / 1e6;
    return 0;
}

void report(double seconds, double before) {
    std::printf("%f %f %f\n", seconds, megabytesOf("VmRSS") - before, megabytesOf("VmHWM") - before);
}

RichTextBox* boxInside(Program& program) {
    auto* box = new RichTextBox;
    QMdiSubWindow* frame = program.fr_main().mdiArea()->addSubWindow(box);
    frame->resize(400, 400);
    frame->show();
    paint(program.fr_main());
    return box;
}

// The same control, the same main window, the same text: loaded and painted, nothing else done.
int measureBare(Program& program, const std::string& path) {
    RichTextBox* box = boxInside(program);
    const std::string bytes = readWholeFile(path).value();
    const double before = megabytesOf("VmRSS");
    QElapsedTimer timer;
    timer.start();
    box->setText(bytes);
    paint(*box);
    report(static_cast<double>(timer.nsecsElapsed()) / 1e9, before);
    return 0;
}

// The block list, and the colours of the whole text, which opening works out only where they are seen.
int measureColours(Program& program, const std::string& path) {
    RichTextBox* box = boxInside(program);
    const std::string bytes = readWholeFile(path).value();
    box->setText(bytes);
    paint(*box);
    const auto rule = std::make_shared<OpeningColours>(KeywordList(), KeywordColor, CommentDelimiter, CommentHighlight);
    const double before = megabytesOf("VmRSS");
    QElapsedTimer timer;
    timer.start();
    const std::vector<BlockEntry> blocks = blockPass(bytes, HeaderKind::Object);
    box->colourBy(rule);
    constexpr std::ptrdiff_t lessThanAPiece = 1 << 13;
    for (std::ptrdiff_t at = 0; at < box->textLength(); at += lessThanAPiece)
        static_cast<void>(box->textColorAt(at));
    report(static_cast<double>(timer.nsecsElapsed()) / 1e9, before);
    return blocks.empty() ? 1 : 0;
}

int measureOpen(Program& program, const std::string& path) {
    const double before = megabytesOf("VmRSS");
    QElapsedTimer timer;
    timer.start();
    program.openEditor(path);
    auto* editor = program.fr_main().findChild<fr_edit*>();
    paint(*editor->txt_edit);
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    if (editor->txt_edit->textLength() != static_cast<std::ptrdiff_t>(editor->Filetext.size()))
        return 1;
    report(seconds, before);
    return 0;
}

int measure(const QString& what, const std::string& folder, const std::string& path) {
    Program program(folder);
    program.fr_main().show();
    paint(program.fr_main());
    if (what == QLatin1String("bare"))
        return measureBare(program, path);
    return what == QLatin1String("colours") ? measureColours(program, path) : measureOpen(program, path);
}

struct Figures {
    double seconds;
    double rest; // megabytes
    double peak;
};

Figures measured(const QString& what, const QString& folder, const QString& file) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), what, folder, file});
    process.waitForFinished(-1);
    Figures figures{};
    if (std::sscanf(process.readAllStandardOutput().constData(), "%lf %lf %lf", &figures.seconds, &figures.rest,
                    &figures.peak) != 3) {
        std::cerr << "a measurement of " << what.toStdString() << " failed\n";
        std::exit(1);
    }
    return figures;
}

Figures median(const std::vector<Figures>& runs) {
    const auto of = [&runs](double Figures::*figure) {
        std::vector<double> values;
        for (const Figures& run : runs)
            values.push_back(run.*figure);
        return quantile(values, 0.5);
    };
    return {of(&Figures::seconds), of(&Figures::rest), of(&Figures::peak)};
}

struct OpenedFile {
    Figures bare, colours, open;
    double added; // by opening, to bare, over bare: the median of the rounds' ratios
};

// Bare, colours and opening in turn, so that a spell in which the machine is slow hits them alike.
OpenedFile measureFile(const QString& folder, const QString& file, int rounds) {
    std::vector<Figures> bare, colours, open;
    std::vector<double> added;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(measured(QStringLiteral("bare"), folder, file));
        open.push_back(measured(QStringLiteral("open"), folder, file));
        colours.push_back(measured(QStringLiteral("colours"), folder, file));
        added.push_back(open.back().seconds / bare.back().seconds - 1);
    }
    return {median(bare), median(colours), median(open), quantile(added, 0.5)};
}

// Ten times the text with ten times the blocks, neither of them in the processor's caches: what counts is how the time
// grows.
void measureBlockList() {
    std::string somethingElse(100'000'000, ' ');
    const auto secondsFor = [&](std::size_t megabytes, std::size_t blocks) {
        const std::string text = generatedText({.megabytes = megabytes, .blocks = blocks});
        std::vector<double> times;
        for (int run = 0; run < 7; ++run) {
            std::fill(somethingElse.begin(), somethingElse.end(), static_cast<char>(run));
            times.push_back(secondsOf([&] { static_cast<void>(blockPass(text, HeaderKind::Object)); }));
        }
        return quantile(times, 0.5);
    };
    row("block list of 100,000 blocks, over that of 10,000", secondsFor(50, 100'000) / secondsFor(5, 10'000), 13);
}

// A repaint without an edit, and the time to open, of a file that is one line but for its block.
void measureLongLines(const QString& folder) {
    constexpr std::size_t megabyte = 1'000'000;
    std::string words;
    while (words.size() < megabyte)
        words += "word ";
    const auto opened = [&](const std::string& line, double& seconds) {
        const std::string path = folder.toStdString() + "/line.ini";
        std::ofstream(path, std::ios::binary) << "Object A\r\n" + line + "\r\nEnd\r\n";
        Program program(folder.toStdString());
        program.fr_main().show();
        paint(program.fr_main());
        seconds = secondsOf([&] {
            program.openEditor(path);
            paint(*program.fr_main().findChild<fr_edit*>()->txt_edit);
        });
        RichTextBox& box = *program.fr_main().findChild<fr_edit*>()->txt_edit;
        std::vector<double> repaints;
        for (int run = 0; run < 21; ++run)
            repaints.push_back(secondsOf([&] { box.viewport()->repaint(); }));
        return quantile(repaints, 0.5);
    };
    double seconds = 0;
    std::string ordinary;
    while (ordinary.size() < megabyte)
        ordinary += "word word word word word word ; word\r\n";
    const double repaint = opened(ordinary, seconds);

    const struct {
        const char* opening;
        const char* repainting;
        std::string line;
    } cases[] = {
        {"opening a line of 1 MB, text, s", "its repaint, over ordinary text's", words},
        {"opening a line of 1 MB, all \";\", s", "its repaint, over ordinary text's", std::string(megabyte, ';')},
        {"opening a line of 1 MB, one comment, s", "its repaint, over ordinary text's", "; " + words},
    };

    for (const auto& [opening, repainting, line] : cases) {
        const double again = opened(line, seconds);
        row(opening, seconds, 3);
        row(repainting, again / repaint, 1);
    }
}

int printTable(int rounds) {
    QTemporaryDir folder;
    std::map<int, OpenedFile> files;
    std::printf("%-10s %12s %12s %14s %12s %12s\n", "file", "bare, ms", "colours, ms", "Openfile, ms", "at rest, MB",
                "peak, MB");
    for (const int megabytes : {1, 10, 100}) {
        const QString file = folder.filePath(QStringLiteral("%1.ini").arg(megabytes));
        const std::string text = generatedText({.megabytes = static_cast<std::size_t>(megabytes)});
        std::ofstream(file.toStdString(), std::ios::binary) << text;
        const OpenedFile& opened = files[megabytes] = measureFile(folder.path(), file, rounds);
        std::printf("%3d MB     %12.1f %12.1f %14.1f %12.1f %12.1f\n", megabytes, opened.bare.seconds * 1000,
                    opened.colours.seconds * 1000, opened.open.seconds * 1000, opened.open.rest, opened.open.peak);
    }
    std::printf("\n");
    row("10 MB: what opening adds to bare load and paint, over that", files[10].added, 0.7);
    std::printf("colours of all of 10 MB and its block list, over bare load and paint: %.2f\n",
                files[10].colours.seconds / files[10].bare.seconds);
    row("Openfile of 100 MB, over that of 10 MB", files[100].open.seconds / files[10].open.seconds, 11);
    row("memory at rest, over the file, 100 MB", files[100].open.rest / 100, 3.3);
    row("memory at peak, over the file, 100 MB", files[100].open.peak / 100, 3.6);
    measureBlockList();
    measureLongLines(folder.path());
    return outcome();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("--measure"))
        return measure(arguments[2], arguments[3].toStdString(), arguments[4].toStdString());
    const int runs = arguments.size() == 3 && arguments[1] == QLatin1String("--runs") ? arguments[2].toInt() : 9;
    return printTable(std::max(runs, 1));
}
