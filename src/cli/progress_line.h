#pragma once

#include "analysis/scan_result.h"
#include "export/export_records.h"

namespace tarnwick::cli {

/// A single line on standard error that tells how far a scan or an export has come, written over
/// itself. Writes nothing where standard error is no terminal.
class ProgressLine
{
public:
    ProgressLine();

    void show(const ScanProgress &progress);
    void show(const ExportProgress &progress);
    /// Wipes the line.
    void clear();

private:
    void showText(const QString &text);

    bool m_isTerminal = false;
    bool m_isShown = false;
};

} // namespace tarnwick::cli
