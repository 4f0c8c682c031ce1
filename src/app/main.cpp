#include "adapters/EndBySignal.h"
#include "adapters/Heap.h"
#include "desktop/main/Program.h"

#include <QApplication>

int main(int argc, char** argv) {
    tallybook::adapters::growHeapInLargeSteps();
    tallybook::adapters::cleanUpAtSignals();
    const QApplication app(argc, argv);
    return tallybook::desktop::run();
}
