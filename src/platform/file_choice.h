#pragma once

#include <QString>

#include <functional>

namespace tarnwick::platform {

/// Called with the absolute path of the chosen file; not at all where the user chose none.
using FileChosen = std::function<void(const QString &path)>;

/// Asks the user for one existing file, below a message. The dialog is that of the desktop, which
/// the window brings; without a window nothing happens.
void chooseFile(const QString &message, FileChosen chosen);

/// Answers all questions for a file in the guard's life: the window's dialog, or a test.
class ScopedFileDialog
{
public:
    using Dialog = std::function<void(const QString &message, FileChosen chosen)>;

    explicit ScopedFileDialog(Dialog dialog);
    ~ScopedFileDialog();
    ScopedFileDialog(const ScopedFileDialog &) = delete;
    ScopedFileDialog &operator=(const ScopedFileDialog &) = delete;

private:
    Dialog m_before;
};

} // namespace tarnwick::platform
