// The system's error numbers in words for users.
#pragma once

#include "core/platform/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tallybook::adapters {

// The words of an error number, without a full stop: "the disk is full".
std::string systemWords(int number);

// The error of an action on a path: 'Cannot write "/a/b": the disk is full.'
platform::Error systemError(std::string_view action, const std::filesystem::path& path, int number);

} // namespace tallybook::adapters
