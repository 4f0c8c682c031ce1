// The one handler that an operation has for what nobody expected.
#pragma once

#include "core/platform/Ansi.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/UserInterface.h"

#include <exception>
#include <new>
#include <string>
#include <string_view>

namespace tallybook::platform {

// Runs an operation. An exception ends it and is shown in the error dialog under the operation's tag; its guards
// have unwound by then, so there is nothing to go on with whichever button is pressed. True when it ran to its end.
template <class Callable> bool runOperation(UserInterface& ui, std::string_view tag, Callable&& operation) {
    try {
        operation();
        return true;
    } catch (const std::bad_alloc&) { // what the operation held is given back by now
        ui.showError({.tag = std::string(tag), .text = std::string(texts::kNotEnoughMemory)});
        return false;
    } catch (const std::exception& error) {
        ui.showError({.tag = std::string(tag), .text = ansi::fromUtf8(error.what())});
        return false;
    }
}

} // namespace tallybook::platform
