#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace tarnwick {

/// Why something failed, in words that may be shown to the user as they stand.
struct Failure
{
    QString message;

    bool operator==(const Failure &) const = default;
};

/// A value, or the failure that kept it from coming about.
template <typename T>
using Result = tl::expected<T, Failure>;

/// A Result that holds no value, for operations that only succeed or fail.
using Done = Result<void>;

inline tl::unexpected<Failure> failure(const QString &message)
{
    return tl::unexpected(Failure{message});
}

} // namespace tarnwick
