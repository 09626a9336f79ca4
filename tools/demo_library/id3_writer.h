#pragma once

#include "library_plan.h"

#include <QByteArray>

namespace tarnwick::demo {

constexpr int id3HeaderSize = 10;

/// Builds one ID3v2.3 or v2.4 tag, frame by frame. Texts are ISO Latin-1 or UTF-16 in v2.3, UTF-8
/// in v2.4.
class Id3Writer
{
public:
    explicit Id3Writer(TagForm form)
        : m_form(form)
    {}

    /// Nothing for an empty text.
    void addText(const char *id, const QString &text);
    void addUserText(const QByteArray &description, const QByteArray &value);
    void addComment(const QString &text);
    void addObject(const QByteArray &description, const QByteArray &data);
    void addPicture(const QByteArray &png);

    /// Bytes of the tag so far, the header included.
    qsizetype size() const { return id3HeaderSize + m_frames.size(); }

    /// The whole tag with that many bytes of padding.
    QByteArray tag(qsizetype padding) const;

private:
    void addFrame(const char *id, const QByteArray &payload);

    TagForm m_form;
    QByteArray m_frames;
};

} // namespace tarnwick::demo
