#pragma once

#include <QString>

#include <functional>

namespace tarnwick::platform {

/// A question to the user for one thing that exists on disk.
struct FileQuestion
{
    enum class Kind { File, Folder };

    Kind kind = Kind::File;
    QString message;
    QString acceptLabel = {}; ///< of the button that takes the choice; empty for the desktop's own
};

/// Called with the absolute path of what was chosen; not at all where the user chose nothing.
using FileChosen = std::function<void(const QString &path)>;

/// Asks the user by the dialog of the desktop, which the window brings; without a window nothing
/// happens.
void chooseFile(const FileQuestion &question, FileChosen chosen);

/// Answers all questions for a file in the guard's life: the window's dialog, or a test.
class ScopedFileDialog
{
public:
    using Dialog = std::function<void(const FileQuestion &question, FileChosen chosen)>;

    explicit ScopedFileDialog(Dialog dialog);
    ~ScopedFileDialog();
    ScopedFileDialog(const ScopedFileDialog &) = delete;
    ScopedFileDialog &operator=(const ScopedFileDialog &) = delete;

private:
    Dialog m_before;
};

} // namespace tarnwick::platform
