// Chooses sides and drops structures in a generated AI data file of 10 MB, and drags with a thousand marks shown.
#include "bench/measure.h"
#include "placement/Canvas.h"
#include "placement/Form2.h"
#include "platform/widgets/DropDownList.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <cstdio>
#include <fstream>

namespace {

using namespace blockhouse;

constexpr int sides = 100;
constexpr int structures = 1'000;
constexpr int runs = 50;

std::string generatedFile() {
    const char* const kinds[] = {"PowerMill", "SupplyWharf", "WarFactory", "WatchBunker", "StoneStatue"};
    std::string text;
    for (int side = 0; side < sides; ++side) {
        text += "  SkirmishBuildList MadeUpSide" + std::to_string(side) + "\r\n";
        for (int i = 0; i < structures; ++i)
            text += std::string("    Structure ") + kinds[i % 5] + std::to_string(i) +
                    "\r\n      Location = X:" + std::to_string(10 + i * 7 % 990) +
                    ".50 Y:" + std::to_string(i * 13 % 1000) +
                    ".25\r\n      Facing = 45.00\r\n      Raised = 2\r\n    End\r\n";
        text += "  End\r\n";
    }
    return text;
}

void send(Form2& form, QEvent::Type type, QPointF place, Qt::MouseButtons held) {
    QMouseEvent event(type, place, form.Picture1->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(form.Picture1, &event);
}

double timeOf(Form2& form, const std::function<void(int)>& work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run)
        times.push_back(secondsOf([&] {
            work(run);
            paint(*form.Picture1);
        }));
    return 1000 * quantile(times, 0.95);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/aidata.ini";
    const std::string text = generatedFile();
    std::ofstream(path, std::ios::binary) << text;
    Form2 form;
    const double opening = secondsOf([&] {
        form.Openfile(path);
        paint(form);
    });
    std::printf("%.1f MB, %d sides of %d structures; opened in %.1f ms\n", static_cast<double>(text.size()) / 1e6,
                sides, structures, opening * 1000);
    row("choosing a side, 95 of 100, ms",
        timeOf(form, [&](int run) { form.Combo1->setCurrentIndex(run * 37 % sides); }), 50);
    if (form.Combo2->count() != structures)
        return 1;
    form.Combo1->setCurrentIndex(0);
    form.Combo2->setCurrentIndex(3);
    row("a step of a drag over 1,000 marks, 95 of 100, ms",
        timeOf(form,
               [&](int run) {
                   send(form, QEvent::MouseMove, {10.0 + run * 5, 20.0 + run * 3}, Qt::LeftButton);
               }),
        16);
    row("a drop in the first side, 95 of 100, ms",
        timeOf(form,
               [&](int run) {
                   send(form, QEvent::MouseButtonRelease, {10.0 + run * 5, 20.0 + run * 3}, Qt::NoButton);
               }),
        16);
    return form.log1->blockCount() == runs + 1 ? outcome() : 1;
}
