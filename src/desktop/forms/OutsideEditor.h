// Another program that edits a bitmap file, and the watch over what it saves.
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

namespace tallybook::desktop {

// The program for bitmaps with its arguments, "%f" where the file's name goes: what the environment variable
// TALLYBOOK_PICTURE_EDITOR names, else what the desktop has set for image/bmp. Empty when there is none.
QStringList pictureProgram();

// Words of the line "Exec" of a program's description, as they are started: a file's place is "%f", at the end when
// the line has none, and other places are left out.
QStringList programOfExec(const QString& line);

class OutsideEditor : public QObject {
    Q_OBJECT

public:
    explicit OutsideEditor(QObject* parent) : QObject(parent) {}

    // Starts the program on a file, by a list of arguments; false when it cannot be started.
    bool open(const QStringList& program, const QString& file);
    // A save that the watch has not told of yet.
    bool hasNews() const;

signals:
    void saved();

private:
    void look();
    QByteArray stateOf() const;

    QFileSystemWatcher m_watcher;
    QString m_file;
    QByteArray m_state;
};

} // namespace tallybook::desktop
