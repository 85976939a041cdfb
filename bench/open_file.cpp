// The program with one file opened in it, as if by a double-click right after the start: what compare.sh times, since
// the program itself takes no arguments. No splash window, as its pause would be all that is measured.
//
//   open_file <file>            goes on until it is ended
//   open_file --write <MB> <file>   writes a generated file of that size
#include "app/Program.h"
#include "bench/generated_text.h"
#include "shell/Fr_main.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <fstream>
#include <string_view>

int main(int argc, char** argv) {
    using namespace blockhouse;
    if (argc == 4 && std::string_view(argv[1]) == "--write") {
        std::ofstream(argv[3], std::ios::binary) << generatedText({.megabytes = std::stoul(argv[2])});
        return 0;
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <file> | --write <MB> <file>\n", argv[0]);
        return 2;
    }
    const QApplication application(argc, argv);
    const QTemporaryDir lists;
    Program program(lists.path().toStdString());
    std::ofstream(lists.path().toStdString() + "/Dirs.lst") << "/nowhere\r\n"; // so that nobody asks for directories
    program.fr_main().resize(1000, 700);
    program.fr_main().show();
    QTimer::singleShot(0, &program, [&program, argv] { program.openEditor(argv[1]); });
    return QApplication::exec();
}
