#include "platform/file_choice.h"

#include <utility>

namespace tarnwick::platform {

namespace {

ScopedFileDialog::Dialog &currentDialog()
{
    static ScopedFileDialog::Dialog dialog;
    return dialog;
}

} // namespace

void chooseFile(const FileQuestion &question, FileChosen chosen)
{
    if (currentDialog())
        currentDialog()(question, std::move(chosen));
}

ScopedFileDialog::ScopedFileDialog(Dialog dialog)
    : m_before(std::exchange(currentDialog(), std::move(dialog)))
{}

ScopedFileDialog::~ScopedFileDialog()
{
    currentDialog() = std::move(m_before);
}

} // namespace tarnwick::platform
