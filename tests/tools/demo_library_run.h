#pragma once

#include "raw_library.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QMap>
#include <QProcess>
#include <QStringList>

/// One run of the built program; a status of -1 says that it didn't end by itself.
struct Run
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

inline Run demoLibrary(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(DEMO_LIBRARY), arguments);
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// Each file below the folder with a hash of its bytes.
inline QMap<QString, QByteArray> contents(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        files[QDir(folder).relativeFilePath(path)] =
            QCryptographicHash::hash(raw::fileBytes(path), QCryptographicHash::Sha1);
    }
    return files;
}
