// Guards whose creation does one thing and whose destruction undoes it, so that every way out of an operation
// restores the state.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Screen.h"

namespace tallybook::platform {

// The wait pointer; the default pointer afterwards.
class HourGlass {
public:
    explicit HourGlass(Screen& screen) : m_screen(screen) { m_screen.setPointer(Screen::Pointer::Wait); }
    ~HourGlass() { m_screen.setPointer(Screen::Pointer::Default); }
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;

private:
    Screen& m_screen;
};

// The default pointer; the one that was there before afterwards.
class DefaultCursor {
public:
    explicit DefaultCursor(Screen& screen) : m_screen(screen), m_before(screen.pointer()) {
        m_screen.setPointer(Screen::Pointer::Default);
    }
    ~DefaultCursor() { m_screen.setPointer(m_before); }
    DefaultCursor(const DefaultCursor&) = delete;
    DefaultCursor& operator=(const DefaultCursor&) = delete;

private:
    Screen& m_screen;
    Screen::Pointer m_before;
};

// No repainting of the grid, and its events kept out (GridReady clear); both on again afterwards.
class Freeze {
public:
    Freeze(Screen& screen, model::Document& doc) : m_screen(screen), m_doc(doc) {
        m_screen.setGridRepainting(false);
        m_doc.GridReady = false;
    }
    ~Freeze() {
        m_screen.setGridRepainting(true);
        m_doc.GridReady = true;
    }
    Freeze(const Freeze&) = delete;
    Freeze& operator=(const Freeze&) = delete;

private:
    Screen& m_screen;
    model::Document& m_doc;
};

// An operation that leaves everything as it was when it ends early: while this stands, the user is offered to stop
// it.
class Stoppable {
public:
    explicit Stoppable(Screen& screen) : m_screen(screen) { m_screen.setStoppable(true); }
    ~Stoppable() { m_screen.setStoppable(false); }
    Stoppable(const Stoppable&) = delete;
    Stoppable& operator=(const Stoppable&) = delete;

private:
    Screen& m_screen;
};

} // namespace tallybook::platform
