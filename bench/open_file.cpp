// The program with one file opened in it, as if by a double-click right after the start: what compare.sh times, since
// the program itself takes no arguments. No splash window, as its pause would be all that is measured.
//
//   open_file <file>            goes on until it is ended
//   open_file --take <GB> <file>    the same, with that much memory taken first
//   open_file --write <MB> <file>   writes a generated file of that size
#include "app/Program.h"
#include "bench/generated_text.h"
#include "shell/Fr_main.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

int main(int argc, char** argv) {
    using namespace blockhouse;
    if (argc == 4 && std::string_view(argv[1]) == "--write") {
        std::ofstream(argv[3], std::ios::binary) << generatedText({.megabytes = std::stoul(argv[2])});
        return 0;
    }
    const bool takes = argc == 4 && std::string_view(argv[1]) == "--take";
    if (argc != 2 && !takes) {
        std::fprintf(stderr, "usage: %s [--take <GB>] <file> | --write <MB> <file>\n", argv[0]);
        return 2;
    }
    std::vector<std::unique_ptr<char[]>> taken;
    for (unsigned long gigabytes = takes ? std::stoul(argv[2]) : 0; gigabytes > 0; --gigabytes)
        taken.push_back(std::unique_ptr<char[]>(new char[1'000'000'000]));
    const char* file = argv[argc - 1];
    const QApplication application(argc, argv);
    const QTemporaryDir lists;
    Program program(lists.path().toStdString());
    std::ofstream(lists.path().toStdString() + "/Dirs.lst") << "/nowhere\r\n"; // so that nobody asks for directories
    program.fr_main().resize(1000, 700);
    program.fr_main().show();
    QTimer::singleShot(0, &program, [&program, file] { program.openEditor(file); });
    return QApplication::exec();
}
