#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace tarnwick::EngineExporter {

/// What SQLite refused while an Engine database was written.
struct EngineError
{
    enum class Kind { Open, Exec };

    Kind kind = Kind::Exec;
    QString text; ///< SQLite's own words, else "unknown"

    /// For the user.
    QString message() const
    {
        return kind == Kind::Open ? QStringLiteral("Couldn't create Engine database: %1").arg(text)
                                  : QStringLiteral("Engine write failed: %1").arg(text);
    }

    bool operator==(const EngineError &) const = default;
};

template <typename T>
using EngineResult = tl::expected<T, EngineError>;

} // namespace tarnwick::EngineExporter
