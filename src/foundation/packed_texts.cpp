#include "foundation/packed_texts.h"

#include <utility>

namespace tarnwick {

void PackedTexts::startBlock()
{
    m_block = QString::DataPointer(Block::allocate(blockUnits));
    Q_CHECK_PTR(m_block.data());
    m_next = m_block.data();
    m_room = blockUnits;
}

void TextStock::fill(QString &&text)
{
    giveBack();
    QString::DataPointer &data = text.data_ptr();
    if (!data.d)
        return;
    m_size = qint32(data.size);
    m_offset = quint16(reinterpret_cast<char *>(data.ptr) - reinterpret_cast<char *>(data.d));
    m_block = std::exchange(data.d, nullptr);
    text = QString();
}

void TextStock::giveBack()
{
    if (!m_block)
        return;
    PackedTexts::addHolders(m_block, -std::exchange(m_left, quint16(0)));
    // The stock's own share ends with this text.
    const QString share(QString::DataPointer(std::exchange(m_block, nullptr), nullptr, 0));
    m_size = 0;
}

} // namespace tarnwick
