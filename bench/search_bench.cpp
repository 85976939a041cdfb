// Searches 100 MB in 40 files in the real search window, with grep and ripgrep on the same files in the same run, and
// starts the program on ten directories of 10,000 files. Ratios count, not milliseconds.
//
//   search_bench            the medians of five searches each, and of five starts
#include "app/Program.h"
#include "bench/generated_text.h"
#include "bench/measure.h"
#include "findref/fr_findref.h"
#include "shell/Fr_main.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

using namespace blockhouse;

constexpr int runs = 5;
constexpr int files = 40;
constexpr std::size_t megabytes = 100;
const std::string needle = "quiGuzan"; // some thousand hits

double medianOf(const std::function<double()>& measure) {
    std::vector<double> values;
    for (int run = 0; run < runs; ++run)
        values.push_back(measure());
    return quantile(values, 0.5);
}

void writeFiles(const std::string& folder) {
    const std::string text = generatedText({.megabytes = megabytes});
    const std::size_t size = text.size() / files;
    for (std::size_t file = 0; file < files; ++file) {
        std::ofstream out(folder + "/part" + std::to_string(file) + ".ini", std::ios::binary);
        out << text.substr(file * size, size);
    }
}

// Its output goes to a file: a search that prints to nowhere stops at the first hit.
std::optional<double> peerSeconds(const QString& program, QStringList arguments, const QString& folder, int& lines) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return std::nullopt;
    for (int file = 0; file < files; ++file)
        arguments.append(folder + QStringLiteral("/part%1.ini").arg(file));
    const QString output = folder + QStringLiteral("/../hits.txt");
    const double seconds = medianOf([&] {
        QProcess process;
        process.setStandardOutputFile(output);
        return secondsOf([&] {
            process.start(program, arguments);
            process.waitForFinished(-1);
        });
    });
    QFile hits(output);
    if (!hits.open(QIODevice::ReadOnly))
        std::exit(1);
    lines = static_cast<int>(hits.readAll().count('\n'));
    return seconds;
}

struct Search {
    double seconds;
    double firstHit;
    double longestGap; // without events served
    int hits;
};

Search searchOnce(Program& program) {
    fr_findref& window = program.fr_findref();
    Search search{};
    QElapsedTimer timer;
    const auto elapsed = [&timer] { return static_cast<double>(timer.nsecsElapsed()) / 1e9; };
    const auto listening = QObject::connect(window.List1->model(), &QAbstractItemModel::rowsInserted, &window, [&] {
        if (search.firstHit == 0)
            search.firstHit = elapsed();
    });
    double lastServed = 0;
    const auto served = [&] {
        search.longestGap = std::max(search.longestGap, elapsed() - lastServed);
        lastServed = elapsed();
    };
    QTimer always;
    QObject::connect(&always, &QTimer::timeout, served);
    always.start(0);
    timer.start();
    window.findRef(needle);
    paint(window);
    search.seconds = elapsed();
    served();
    QObject::disconnect(listening);
    search.hits = window.List1->model()->rowCount();
    return search;
}

void compareSearches(Program& program, const QString& folder) {
    std::vector<double> seconds, firstHits, gaps;
    int hits = 0;
    for (int run = 0; run < runs; ++run) {
        const Search search = searchOnce(program);
        seconds.push_back(search.seconds), firstHits.push_back(search.firstHit), gaps.push_back(search.longestGap);
        hits = search.hits;
    }
    const double ours = quantile(seconds, 0.5);
    std::printf("search of 100 MB in 40 files: %.1f ms, %d hits\n", ours * 1000, hits);
    const QString what = QString::fromStdString(needle);
    int lines = 0;
    if (const auto grep = peerSeconds(QStringLiteral("grep"), {QStringLiteral("-aiobF"), what}, folder, lines))
        std::printf("grep -aiobF: %.1f ms, %d hits (some cross a block's end)\n", *grep * 1000, lines);
    const QStringList rgArguments{QStringLiteral("-j1"), QStringLiteral("-aiobF"), what};
    if (const auto rg = peerSeconds(QStringLiteral("rg"), rgArguments, folder, lines)) {
        std::printf("rg -j1 -aiobF: %.1f ms, %d hits\n", *rg * 1000, lines);
        row("search of 100 MB with hits listed, over rg -j1", ours / *rg, 0.5);
    } else {
        std::printf("ripgrep is not installed: nothing to compare with\n");
    }
    row("first hit listed, ms", quantile(firstHits, 0.5) * 1000, 100);
    row("longest time without serving events, ms", *std::max_element(gaps.begin(), gaps.end()) * 1000, 50);
}

double secondsToClose(Program& program) {
    double asked = 0;
    QElapsedTimer timer;
    timer.start();
    const auto elapsed = [&timer] { return static_cast<double>(timer.nsecsElapsed()) / 1e9; };
    fr_findref& window = program.fr_findref();
    QTimer::singleShot(5, &window, [&] {
        asked = elapsed();
        window.parentWidget()->close();
    });
    window.findRef(needle);
    const double seconds = elapsed() - asked;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return seconds;
}

// From making the main window to its first frame; the splash window's pause is left aside.
double startSeconds(const std::string& folder) {
    Program program(folder);
    return secondsOf([&] {
        program.fr_main().show();
        paint(program.fr_main());
    });
}

void measureStarts(const std::string& root) {
    const std::string small = root + "/small";
    std::filesystem::create_directories(small + "/data");
    for (int file = 0; file < 10; ++file)
        std::ofstream(small + "/data/" + std::to_string(file) + ".ini") << "End\r\n";
    std::ofstream(small + "/Dirs.lst", std::ios::binary) << small << "/data\r\n";
    row("start to main window, small workspace, s", medianOf([&] { return startSeconds(small); }), 0.3);

    const std::string large = root + "/large";
    for (int directory = 0; directory < 10; ++directory) {
        const std::string path = large + "/data" + std::to_string(directory);
        std::filesystem::create_directories(path);
        std::ofstream(large + "/Dirs.lst", std::ios::binary | std::ios::app) << path << "\r\n";
        for (int file = 0; file < 10'000; ++file)
            std::ofstream(path + "/made up name " + std::to_string(file * 7919 % 10'000) + ".ini");
    }
    row("main window usable with 10 directories of 10,000 files, s", medianOf([&] { return startSeconds(large); }),
        0.5);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const std::string root = folder.path().toStdString();
    const std::string data = root + "/data";
    std::filesystem::create_directory(data);
    writeFiles(data);
    std::ofstream(root + "/Dirs.lst", std::ios::binary) << data << "\r\n";
    {
        Program program(root);
        program.fr_main().show();
        program.fr_main().resize(1000, 700);
        paint(program.fr_main());
        compareSearches(program, QString::fromStdString(data));
        row("from closing the window to the end of its search, ms",
            medianOf([&] { return secondsToClose(program); }) * 1000, 50);
    }
    measureStarts(root);
    return outcome();
}
