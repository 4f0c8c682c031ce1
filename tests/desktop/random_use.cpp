// A long run of a user without a plan: random_use SECONDS [SEED]. Tells the seed, so that a run can be repeated, and
// ends with 1 when something was not as it should be.
#include "desktop/RandomUse.h"
#include "desktop/grid/GridAccessible.h"

#include <QApplication>
#include <QElapsedTimer>

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace {

constexpr int kActionsARun = 500;

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: random_use SECONDS [SEED]\n";
        return 2;
    }
    const qint64 milliseconds = std::strtoll(argv[1], nullptr, 10) * 1000;
    auto seed = static_cast<std::uint32_t>(argc > 2 ? std::strtoul(argv[2], nullptr, 10) : std::random_device{}());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    tallybook::desktop::installGridAccessible();
    QElapsedTimer clock;
    clock.start();
    int actions = 0;
    std::set<std::string> seen;
    do {
        std::cerr << "seed " << seed << '\n';
        tallybook::test::RandomUse use(seed);
        use.user().setLog(&std::cerr);
        use.user().act(kActionsARun);
        actions += use.user().actions();
        seen.insert(use.user().seen().begin(), use.user().seen().end());
        if (!use.user().problems().empty()) {
            std::cerr << "random_use: seed " << seed << '\n';
            for (const std::string& problem : use.user().problems())
                std::cerr << problem << '\n';
            return 1;
        }
        ++seed;
    } while (clock.elapsed() < milliseconds);
    std::cerr << actions << " actions, these windows and menus:";
    for (const std::string& window : seen)
        std::cerr << ' ' << window;
    std::cerr << '\n';
    return 0;
}
