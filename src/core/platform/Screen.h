// What an operation does to the screen beside asking: progress, the mouse pointer, repainting, a sound. This one
// shows nothing, which is right for whoever works without a window.
#pragma once

#include <cstdint>
#include <string>

namespace tallybook::platform {

class Screen {
public:
    virtual ~Screen() = default;

    // The sound that goes with a refusal.
    virtual void beep() {}

    // The progress bar of the status line: value of maximum with a caption in Windows-1252. A maximum of 0 hides it.
    virtual void progress(const std::string& caption, int value, int maximum) {
        static_cast<void>(caption);
        static_cast<void>(value);
        static_cast<void>(maximum);
    }

    // Whether the running operation can be given up between two records. Set by the guard Stoppable alone.
    virtual void setStoppable(bool stoppable) { static_cast<void>(stoppable); }
    // True once the user wants the running operation to end; asked between two records, inside a Stoppable only.
    virtual bool stopWanted() { return false; }

    // The mouse pointer. Used by the guards HourGlass and DefaultCursor alone.
    enum class Pointer : std::uint8_t { Default, Wait };
    virtual Pointer pointer() const { return Pointer::Default; }
    virtual void setPointer(Pointer pointer) { static_cast<void>(pointer); }

    // Stops or allows repainting of the document's grid. Used by the guard Freeze alone.
    virtual void setGridRepainting(bool repaints) { static_cast<void>(repaints); }
};

} // namespace tallybook::platform
