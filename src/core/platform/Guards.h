// Guards whose creation does one thing and whose destruction undoes it, so that every way out of an operation
// restores the state.
#pragma once

#include "core/model/Document.h"
#include "core/platform/UserInterface.h"

namespace tallybook::platform {

// The wait pointer; the default pointer afterwards.
class HourGlass {
public:
    explicit HourGlass(UserInterface& ui) : m_ui(ui) { m_ui.setPointer(UserInterface::Pointer::Wait); }
    ~HourGlass() { m_ui.setPointer(UserInterface::Pointer::Default); }
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;

private:
    UserInterface& m_ui;
};

// The default pointer; the one that was there before afterwards.
class DefaultCursor {
public:
    explicit DefaultCursor(UserInterface& ui) : m_ui(ui), m_before(ui.pointer()) {
        m_ui.setPointer(UserInterface::Pointer::Default);
    }
    ~DefaultCursor() { m_ui.setPointer(m_before); }
    DefaultCursor(const DefaultCursor&) = delete;
    DefaultCursor& operator=(const DefaultCursor&) = delete;

private:
    UserInterface& m_ui;
    UserInterface::Pointer m_before;
};

// No repainting of the grid, and its events kept out (GridReady clear); both on again afterwards.
class Freeze {
public:
    Freeze(UserInterface& ui, model::Document& doc) : m_ui(ui), m_doc(doc) {
        m_ui.setGridRepainting(false);
        m_doc.GridReady = false;
    }
    ~Freeze() {
        m_ui.setGridRepainting(true);
        m_doc.GridReady = true;
    }
    Freeze(const Freeze&) = delete;
    Freeze& operator=(const Freeze&) = delete;

private:
    UserInterface& m_ui;
    model::Document& m_doc;
};

} // namespace tallybook::platform
