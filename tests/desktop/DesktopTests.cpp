#include "desktop/grid/GridAccessible.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion")); // the same windows on every machine
    tallybook::desktop::installGridAccessible();
    return RUN_ALL_TESTS();
}
