#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <cstdlib>

namespace tarnwick::fuzzing {

/// One folder for all inputs of the process, in memory where there is such a place, for what reads
/// and writes files. It goes with the process, unless that is ended by a find.
class Scratch
{
public:
    Scratch()
        : m_folder(place())
    {
        if (!m_folder.isValid())
            std::abort();
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Puts bytes into a file in place, and gives its path.
    QString put(const QString &name, QByteArrayView content) const
    {
        QFile file(path(name));
        const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        if (!isOpen || file.write(content.data(), content.size()) != content.size())
            std::abort();
        return file.fileName();
    }

    QByteArray contentOf(const QString &name) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        return file.readAll();
    }

private:
    static QString place()
    {
        const QString memory = QStringLiteral("/dev/shm");
        return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
               QStringLiteral("/tarnwick-fuzz-XXXXXX");
    }

    QTemporaryDir m_folder;
};

} // namespace tarnwick::fuzzing
