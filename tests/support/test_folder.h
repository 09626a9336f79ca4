#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tarnwick::testing {

/// A folder of the test's own that goes away with it. Names are relative to it.
class TestFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file, and the folders on the way to it; gives its path.
    QString write(const QString &name, const QByteArray &content = {}) const
    {
        const QString file = path(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
            qFatal("can't write %s", qUtf8Printable(file));
        return file;
    }

    /// Makes a folder; gives its path.
    QString makeFolder(const QString &name) const
    {
        QDir().mkpath(path(name));
        return path(name);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("can't read %s", qUtf8Printable(file.fileName()));
        return file.readAll();
    }

    /// The names of a folder's entries, hidden ones included, in order.
    QStringList names(const QString &folder = {}) const
    {
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        return QDir(path(folder)).entryList(all, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace tarnwick::testing
