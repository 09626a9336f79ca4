#include "repair/repair_engine.h"

#include "platform/folder_lock.h"

using namespace Qt::StringLiterals;

namespace tarnwick::RepairEngine {

QString RepairError::message() const
{
    switch (kind) {
    case Kind::SeratoRunning:
        return u"Serato is running — close it before making changes."_s;
    case Kind::NotFound:
        return u"That track is no longer in the database."_s;
    case Kind::ReadFailed:
        return cause;
    case Kind::WriteFailed:
        return u"Write failed: "_s + cause;
    }
    return {};
}

tl::expected<void, RepairError> mutate(const SeratoLibrary::Location &location, const Edit &edit)
{
    using Kind = RepairError::Kind;
    if (SeratoLibrary::isSeratoRunning())
        return tl::unexpected(RepairError{Kind::SeratoRunning});
    const platform::FolderLock lock(location.folderPath(), platform::FolderLock::Kind::Exclusive);
    Result<SeratoDocument> document = SeratoDocument::read(location.databasePath());
    if (!document)
        return tl::unexpected(RepairError{Kind::ReadFailed, document.error().message});
    if (!edit(*document))
        return tl::unexpected(RepairError{Kind::NotFound});
    const Done written = document->write(location.databasePath());
    if (!written)
        return tl::unexpected(RepairError{Kind::WriteFailed, written.error().message});
    return {};
}

} // namespace tarnwick::RepairEngine
