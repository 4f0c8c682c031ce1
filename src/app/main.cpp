#include "desktop/main/Program.h"

#include <QApplication>

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    return tallybook::desktop::run();
}
