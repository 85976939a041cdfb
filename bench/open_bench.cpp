// Opens generated files in the real main window and prints times and memory as ratios taken in one run.
//
//   open_bench              generates the files, runs itself once per measurement, prints the table
//   open_bench --runs N     measurements per figure; the median counts (5)
//
// One process per measurement: peak memory is a process's own, and a second opening would find a warm heap.
#include "app/Program.h"
#include "bench/generated_text.h"
#include "bench/measure.h"
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "editor/textboxbas.h"
#include "platform/system/files.h"
#include "shell/Fr_main.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>

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

// What opening adds to that: the block list, the keyword pass and the comment pass.
int measurePasses(Program& program, const std::string& path) {
    RichTextBox* box = boxInside(program);
    const std::string bytes = readWholeFile(path).value();
    box->setText(bytes);
    paint(*box);
    const double before = megabytesOf("VmRSS");
    QElapsedTimer timer;
    timer.start();
    const std::vector<BlockEntry> blocks = blockPass(bytes, HeaderKind::Object);
    ColorKeywords(box, *box, KeywordColor, KeywordList(), false);
    HighlightFromChar(box, *box, CommentHighlight, CommentDelimiter, false);
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
    return what == QLatin1String("passes") ? measurePasses(program, path) : measureOpen(program, path);
}

struct Figures {
    double seconds;
    double rest; // megabytes
    double peak;
};

Figures median(const QString& what, const QString& folder, const QString& file, int runs) {
    std::vector<double> seconds, rest, peak;
    for (int run = 0; run < runs; ++run) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), what, folder, file});
        process.waitForFinished(-1);
        double s = 0, r = 0, p = 0;
        if (std::sscanf(process.readAllStandardOutput().constData(), "%lf %lf %lf", &s, &r, &p) != 3) {
            std::cerr << "a measurement of " << what.toStdString() << " failed\n";
            std::exit(1);
        }
        seconds.push_back(s), rest.push_back(r), peak.push_back(p);
    }
    return {quantile(seconds, 0.5), quantile(rest, 0.5), quantile(peak, 0.5)};
}

// Seconds from the start of another editor until it rests: the last time its processor time was seen to grow.
// Nothing when it is not installed.
std::optional<double> peerSettles(const QString& program, const QStringList& arguments) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return std::nullopt;
    const auto ticksOf = [](qint64 pid) {
        std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
        std::string line;
        std::getline(stat, line);
        std::istringstream fields(line.substr(std::min(line.size(), line.rfind(')') + 1)));
        std::string skipped;
        for (int field = 0; field < 11; ++field)
            fields >> skipped;
        long user = 0, system = 0;
        fields >> user >> system;
        return user + system;
    };
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    process.waitForStarted();
    constexpr double restsAfter = 0.5;
    long ticks = 0;
    double lastGrowth = 0;
    while (static_cast<double>(timer.elapsed()) / 1000 < lastGrowth + restsAfter) {
        QThread::msleep(2);
        if (const long now = ticksOf(process.processId()); now != ticks) {
            ticks = now;
            lastGrowth = static_cast<double>(timer.elapsed()) / 1000;
        }
    }
    process.kill();
    process.waitForFinished();
    return lastGrowth;
}

void comparePeer(const QString& folder, const QString& file, double openSeconds, int runs) {
    std::vector<double> seconds;
    for (int run = 0; run < runs; ++run) {
        const auto settled =
            peerSettles(QStringLiteral("geany"), {QStringLiteral("-i"), QStringLiteral("-c"), folder, file});
        if (!settled) {
            std::printf("geany is not installed: nothing to compare with\n");
            return;
        }
        seconds.push_back(*settled);
    }
    const double peer = quantile(seconds, 0.5);
    std::printf("geany, 10 MB, from start to rest: %.1f ms\n", peer * 1000);
    row("Openfile of 10 MB, over geany from start to rest", openSeconds / peer, 1);
}

int printTable(int runs) {
    QTemporaryDir folder;
    std::map<int, Figures> open, bare, passes;
    std::printf("%-10s %12s %12s %14s %12s %12s\n", "file", "bare, ms", "passes, ms", "Openfile, ms", "at rest, MB",
                "peak, MB");
    for (const int megabytes : {1, 10, 100}) {
        const QString file = folder.filePath(QStringLiteral("%1.ini").arg(megabytes));
        const std::string text = generatedText({.megabytes = static_cast<std::size_t>(megabytes)});
        std::ofstream(file.toStdString(), std::ios::binary) << text;
        bare[megabytes] = median(QStringLiteral("bare"), folder.path(), file, runs);
        passes[megabytes] = median(QStringLiteral("passes"), folder.path(), file, runs);
        open[megabytes] = median(QStringLiteral("open"), folder.path(), file, runs);
        std::printf("%3d MB     %12.1f %12.1f %14.1f %12.1f %12.1f\n", megabytes, bare[megabytes].seconds * 1000,
                    passes[megabytes].seconds * 1000, open[megabytes].seconds * 1000, open[megabytes].rest,
                    open[megabytes].peak);
    }
    std::printf("\n");
    row("10 MB: passes and block list, over bare load and paint", passes[10].seconds / bare[10].seconds, 1.5);
    row("Openfile of 100 MB, over that of 10 MB", open[100].seconds / open[10].seconds, 11);
    row("memory at rest, over the file, 100 MB", open[100].rest / 100, 4.5);
    row("memory at peak, over the file, 100 MB", open[100].peak / 100, 8);
    comparePeer(folder.path(), folder.filePath(QStringLiteral("10.ini")), open[10].seconds, runs);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("--measure"))
        return measure(arguments[2], arguments[3].toStdString(), arguments[4].toStdString());
    const int runs = arguments.size() == 3 && arguments[1] == QLatin1String("--runs") ? arguments[2].toInt() : 5;
    return printTable(std::max(runs, 1));
}
