#pragma once

#include "platform/fault_gate.h"

#include <QMap>
#include <QStringList>

#include <functional>

namespace tarnwick::testing {

/// What an operation does to make bytes last and to let them count, in order: "flush a.mp3",
/// "rename a.mp3", "remove a.mp3", each with the last component of the path; "flush ." for a
/// folder.
inline QStringList lastingCallsOf(const std::function<void()> &act)
{
    using platform::FileOperation;
    static const QMap<FileOperation, QString> words = {
        {FileOperation::Flush, QStringLiteral("flush ")},
        {FileOperation::Rename, QStringLiteral("rename ")},
        {FileOperation::Remove, QStringLiteral("remove ")}};
    QStringList calls;
    const platform::ScopedFaults recorder([&](FileOperation operation, const QString &path) {
        if (words.contains(operation))
            calls << words[operation] + path.section(u'/', -1);
        return 0;
    });
    act();
    return calls;
}

} // namespace tarnwick::testing
