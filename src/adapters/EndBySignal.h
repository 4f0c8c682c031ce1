// What the program takes away when a signal ends it.
#pragma once

#include <csignal>
#include <filesystem>

namespace tallybook::adapters {

// To be called once, at the start of a program. From then on SIGINT, SIGTERM and SIGHUP remove what is noted below
// and then end the program as they always have, but for those that it was started to ignore. A file that grows beyond
// the limit that was set for the process fails its write, instead of ending the program in its middle.
void cleanUpAtSignals();

// Notes a file or a folder, to be removed with all that is in it when a signal ends the program. A path too long, or
// one more than there is room for, stays behind and is swept some day, see LeftOvers.h.
void noteUnfinished(const std::filesystem::path& path);
// It is finished, or gone; one that was not noted is none of our business.
void forgetUnfinished(const std::filesystem::path& path);

// Those signals wait while this lives, so that what is made and what is noted never differ.
class SignalsWait {
public:
    SignalsWait();
    ~SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

private:
    sigset_t m_before{};
};

} // namespace tallybook::adapters
