#include "desktop/forms/OutsideEditor.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextStream>

namespace tallybook::desktop {

namespace {

const QString kFilePlace = QStringLiteral("%f");

// The values of a key in a section of a file of the desktop, those of several programs parted by ";".
QStringList valuesOf(const QString& path, const QString& section, const QString& key) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream in(&file);
    bool inside = false;
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (line.startsWith(u'['))
            inside = line == u'[' + section + u']';
        else if (inside && line.startsWith(key + u'='))
            return line.mid(key.size() + 1).split(u';', Qt::SkipEmptyParts);
    }
    return {};
}

QStringList descriptionsForBitmaps() {
    const QString kind = QStringLiteral("image/bmp");
    QStringList names;
    for (const auto& place : {QStandardPaths::GenericConfigLocation, QStandardPaths::ApplicationsLocation})
        for (const QString& file : QStandardPaths::locateAll(place, QStringLiteral("mimeapps.list")))
            names += valuesOf(file, QStringLiteral("Default Applications"), kind);
    for (const QString& file :
         QStandardPaths::locateAll(QStandardPaths::ApplicationsLocation, QStringLiteral("mimeinfo.cache")))
        names += valuesOf(file, QStringLiteral("MIME Cache"), kind);
    return names;
}

} // namespace

QStringList programOfExec(const QString& line) {
    QStringList program;
    bool hasPlace = false;
    for (const QString& word : QProcess::splitCommand(line)) {
        const bool isFile = word == kFilePlace || word == QStringLiteral("%F") || word == QStringLiteral("%u") ||
                            word == QStringLiteral("%U");
        if (isFile && !hasPlace)
            program.append(kFilePlace);
        else if (!(word.size() == 2 && word.startsWith(u'%')))
            program.append(word);
        hasPlace = hasPlace || isFile;
    }
    if (!program.isEmpty() && !hasPlace)
        program.append(kFilePlace);
    return program;
}

QStringList pictureProgram() {
    const QString chosen = qEnvironmentVariable("TALLYBOOK_PICTURE_EDITOR");
    if (!chosen.isEmpty())
        return programOfExec(chosen);
    for (const QString& name : descriptionsForBitmaps()) {
        const QString file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name);
        const QStringList exec = valuesOf(file, QStringLiteral("Desktop Entry"), QStringLiteral("Exec"));
        if (!exec.isEmpty())
            return programOfExec(exec.join(u';'));
    }
    return {};
}

bool OutsideEditor::open(const QStringList& program, const QString& file) {
    if (program.isEmpty())
        return false;
    QStringList arguments = program.mid(1);
    arguments.replaceInStrings(QRegularExpression(QStringLiteral("^%f$")), file);
    m_file = file;
    m_state = stateOf();
    if (m_watcher.files().isEmpty()) {
        // A program may write beside the file and rename: then the folder tells.
        m_watcher.addPath(file);
        m_watcher.addPath(QFileInfo(file).path());
        connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &OutsideEditor::look);
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &OutsideEditor::look);
    }
    return QProcess::startDetached(program.first(), arguments);
}

QByteArray OutsideEditor::stateOf() const {
    const QFileInfo info(m_file);
    if (!info.exists())
        return {};
    return QByteArray::number(info.size()) + ' ' + QByteArray::number(info.lastModified().toMSecsSinceEpoch());
}

bool OutsideEditor::hasNews() const {
    return !m_file.isEmpty() && stateOf() != m_state;
}

void OutsideEditor::look() {
    if (!hasNews())
        return;
    m_state = stateOf();
    if (!m_state.isEmpty() && !m_watcher.files().contains(m_file))
        m_watcher.addPath(m_file);
    emit saved();
}

} // namespace tallybook::desktop
