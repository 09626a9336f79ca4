#include "safety/store_file.h"

#include <numeric>

namespace tarnwick::StoreFile {

QByteArray read(const QString &path)
{
    platform::FileState state;
    return read(path, state);
}

QByteArray read(const QString &path, platform::FileState &state)
{
    return platform::readSharedFile(path, state).value_or(QByteArray());
}

QByteArray listOf(const QList<QByteArray> &texts)
{
    constexpr qsizetype separator = 4; // comma, line feed, two blanks
    const auto add = [](qsizetype sum, const QByteArray &text) {
        return sum + text.size() + separator;
    };
    QByteArray file;
    file.reserve(std::accumulate(texts.begin(), texts.end(), 2 * separator, add));
    JsonWriter json(file, JsonWriter::Style::Pretty);
    json.beginArray();
    for (const QByteArray &text : texts)
        json.encoded(text);
    json.endArray();
    file.append('\n');
    return file;
}

} // namespace tarnwick::StoreFile
