// Lets a monkey loose on the whole program, on a workspace of its own whose files change and vanish meanwhile.
//
//   monkey <seconds> [seed]      ends with 0 if nothing crashed, hung, or touched a file outside the workspace
//
// What it does is told line by line; the last line before a fault is the action that led to it.
#include "app/Program.h"
#include "fuzz/monkey/Chaos.h"
#include "fuzz/monkey/FileGuard.h"
#include "fuzz/monkey/Monkey.h"
#include "fuzz/monkey/Watchdog.h"
#include "shell/Fr_main.h"
#include "tests/support/TempFolder.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>

namespace {

using namespace blockhouse;

// Settings, caches and the clipboard's files go to the workspace too.
void liveIn(const QString& folder) {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(name, folder.toLocal8Bit());
    QDir::setCurrent(folder);
}

// From the splash window to the end of the main window, or until the time is up.
int runProgram(const Chaos& chaos, Monkey& monkey, const QElapsedTimer& clock, qint64 milliseconds) {
    Program program(chaos.applicationFolder());
    QTimer::singleShot(std::max<qint64>(0, milliseconds - clock.elapsed()), &program, [&] {
        monkey.stop();
        QApplication::closeAllWindows();
        QCoreApplication::exit();
    });
    program.start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <seconds> [seed]\n", argv[0]);
        return 2;
    }
    const qint64 milliseconds = std::atoll(argv[1]) * 1000;
    const auto seed = static_cast<unsigned>(argc > 2 ? std::atoll(argv[2]) : 1);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    const TempFolder workspace;
    liveIn(QString::fromStdString(workspace.path()));
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("blockhouse"));
    QApplication::setQuitOnLastWindowClosed(false);
    std::mt19937 random(seed);
    Chaos chaos(workspace.path(), BLOCKHOUSE_SAMPLES, random);
    guardFilesOutside(workspace.path());

    Watchdog watchdog(Watchdog::Seconds(1), Watchdog::Seconds(30));
    Monkey monkey(random, chaos, watchdog);
    QElapsedTimer clock;
    clock.start();
    int programs = 0;
    while (clock.elapsed() < milliseconds) {
        ++programs;
        runProgram(chaos, monkey, clock, milliseconds);
    }
    std::printf("seed %u: %d actions in %d runs of the program, at most %.2f s busy without serving an event\n", seed,
                monkey.actions(), programs, watchdog.longestGap().count());
    return 0;
}
