// The form designer: fields on the left, the handheld's screen in the middle, the settings of the selected item on
// the right. What each control does is decided by forms::FormDesign.
#pragma once

#include "core/forms/FormDesign.h"

#include <QDialog>

#include <array>
#include <functional>
#include <string_view>

class QAbstractButton;
class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QSlider;
class QSpinBox;
class QToolButton;
class QTreeWidget;

namespace tallybook::desktop {

class FormScreen;

class frmDesignForm : public QDialog {
    Q_OBJECT

public:
    frmDesignForm(model::Document& doc, platform::Services& services, QWidget* parent);

    // The only way out, cmdQuit, Escape and the window's cross alike: asks when something changed.
    void reject() override;

    const forms::FormDesign& design() const { return m_design; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeFields();
    QWidget* makeScreen();
    QWidget* makeTabs();
    QWidget* makeItem();
    QWidget* makeValues();
    QWidget* makeButtons();
    void connectScreen();
    void connectItem();
    void connectTabs();
    // A handler as an operation of its own, the controls shown anew behind it.
    void perform(std::string_view tag, const std::function<void()>& operation);
    void showDesign();
    void showItem();
    void showTabs();
    void showMarks();
    void chooseZoom();
    void addSelectedField();
    void takeItem();
    void takeText();
    void chooseColour(bool back);
    void editHelp();
    void pressKey(QKeyEvent* event);

    platform::Services& m_services;
    forms::FormDesign m_design;
    bool m_showing = false; // the controls are being filled

    QTreeWidget* m_fields = nullptr; // LVFieldList
    QScrollArea* m_area = nullptr;
    FormScreen* m_screen = nullptr;                     // BoxControl
    QLabel* m_markUp = nullptr;                         // LblMarkUp
    QLabel* m_markDown = nullptr;                       // LblMarkDown
    QSpinBox* m_tabs = nullptr;                         // UpDown1, its line is Text2
    QSlider* m_slider = nullptr;                        // Slider2
    QSpinBox* m_start = nullptr;                        // UpDown2
    QLineEdit* m_tabName = nullptr;                     // Text4
    QLabel* m_which = nullptr;                          // lblSelected
    QLineEdit* m_text = nullptr;                        // FldLabel
    QFrame* m_fontFrame = nullptr;                      // FontFrame
    QFrame* m_alignFrame = nullptr;                     // alignmentFrame
    std::array<QRadioButton*, forms::kFonts> m_fonts{}; // OptFont0 to OptFont3
    std::array<QToolButton*, 3> m_align{};              // alignBtn0 to alignBtn2
    QPushButton* m_fore = nullptr;                      // cmdForecolor
    QPushButton* m_back = nullptr;                      // cmdBackcolor
    QPushButton* m_help = nullptr;                      // Cmdpophlp
    QCheckBox* m_lock = nullptr;                        // FldLock
    QCheckBox* m_combo = nullptr;                       // DisplayAsCombo
    QCheckBox* m_label = nullptr;                       // DisplayAsLabel
    QLabel* m_sample = nullptr;                         // lblSample
    QCheckBox* m_values = nullptr;                      // chkShowValues
    QToolButton* m_previous = nullptr;
    QToolButton* m_next = nullptr;
    QLabel* m_record = nullptr;
};

} // namespace tallybook::desktop
