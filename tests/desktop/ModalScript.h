// Answers the dialogs and menus that a test's action brings up, in the order of a script. One that nobody expected
// fails the test and is closed; so does a step whose dialog never came.
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>

namespace tallybook::test {

class ModalScript : public QObject {
    Q_OBJECT

public:
    ModalScript();
    ~ModalScript() override;

    using Step = std::function<void(QWidget& window)>;
    void expect(Step step) { m_steps.push_back(std::move(step)); }

    // A message box with this text, answered with the button of this caption (without "&").
    void expectMessage(const QString& text, const QString& button = QStringLiteral("OK"));
    // A pop-up menu, whose item of this object name is chosen.
    void expectMenu(const QString& menu, const QString& item);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void run(QWidget* window);

    std::deque<Step> m_steps;
};

// Presses the button of a caption (without "&") in a window; fails the test when there is none.
void pressButton(QWidget& window, const QString& caption);

} // namespace tallybook::test
