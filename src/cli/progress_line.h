#pragma once

#include "analysis/scan_result.h"

namespace tarnwick::cli {

/// A single line on standard error that tells how far a scan has come, written over itself. Writes
/// nothing where standard error is no terminal.
class ProgressLine
{
public:
    ProgressLine();

    void show(const ScanProgress &progress);
    /// Wipes the line.
    void clear();

private:
    bool m_isTerminal = false;
    bool m_isShown = false;
};

} // namespace tarnwick::cli
