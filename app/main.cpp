#include "app/Program.h"
#include "shell/artwork.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

std::string bytesOf(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("blockhouse"));
    QApplication::setDesktopFileName(QStringLiteral("blockhouse"));
    QApplication::setWindowIcon(blockhouse::applicationIcon());
    // The main window alone ends the program; between the splash window and it there may be no window at all.
    QApplication::setQuitOnLastWindowClosed(false);

    const QString programFolder = QApplication::applicationDirPath();
    blockhouse::Program program(
        blockhouse::applicationFolderOf(bytesOf(programFolder), QFileInfo(programFolder).isWritable(),
                                        bytesOf(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))));
    program.start();
    return QApplication::exec();
}
