#include "desktop/RandomUse.h"

#include "Samples.h"
#include "core/platform/AppFolders.h"
#include "support/AnyDatabase.h"

#include <QApplication>
#include <QTest>

namespace tallybook::test {

namespace {

constexpr std::uint32_t kOddDatabases = 4;

} // namespace

RandomUse::RandomUse(std::uint32_t seed) {
    for (const char* folder : {"/app", "/data", "/palm/Ann/Backup", "/palm/Bob/Backup"})
        m_files.addFolder(folder);
    platform::makeFolders(m_services);
    m_window = std::make_unique<desktop::frmMain>(m_services, m_interface, m_settings);
    m_window->setHandheld(m_desktop, {{"Ann", "Bob"}, {"/palm/Ann/Backup", "/palm/Bob/Backup"}, "Ann"});
    m_window->resize(900, 600);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    static_cast<void>(QTest::qWaitForWindowExposed(m_window.get()));
    m_user = std::make_unique<RandomUser>(*m_window, m_files, m_services, seed);
    for (const samples::Sample& sample : samples::samples()) {
        m_user->addDatabase("/data/" + std::string(sample.fileName), sample.make());
        m_files.put("/palm/Ann/Backup/" + std::string(sample.fileName), sample.make());
    }
    for (std::uint32_t odd = 0; odd < kOddDatabases; ++odd)
        m_user->addDatabase("/data/MS2_Odd" + std::to_string(odd) + ".pdb",
                            AnyDatabase(seed * kOddDatabases + odd).foreign.bytes());
    m_user->addDatabase("/data/MS2_Full.pdb", samples::large({.records = 65448, .fields = 20, .filled = 30}));
}

RandomUse::~RandomUse() {
    m_user.reset();
    m_window.reset(); // without a question: what was done at random is not kept
}

} // namespace tallybook::test
