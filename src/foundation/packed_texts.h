#pragma once

#include <QString>

namespace tarnwick {

/// Makes texts that lie side by side in common blocks of memory, so that hundreds of thousands of
/// short ones take a fraction of the allocations. Each is a QString like any other, to be kept,
/// copied and changed anywhere; the last holder of a block frees it.
///
/// Counts holders without a lock: while it lives, its texts stay on its thread.
class PackedTexts
{
public:
    /// A text of so many code units, all of which `fill(char16_t *)` sets.
    template <typename Fill>
    QString text(qsizetype units, Fill &&fill)
    {
        if (units <= 0)
            return {};
        if (units > longestPacked) {
            QString alone(units, Qt::Uninitialized);
            fill(reinterpret_cast<char16_t *>(alone.data()));
            return alone;
        }
        if (units >= m_room)
            startBlock();
        char16_t *const start = m_next;
        fill(start);
        start[units] = u'\0';
        m_next += units + 1;
        m_room -= units + 1;
        addHolders(m_block.d_ptr(), 1);
        return QString(QString::DataPointer(m_block.d_ptr(), start, units));
    }

private:
    friend class TextStock;
    using Block = QTypedArrayData<char16_t>;

    // With Qt's and the allocator's headers, 512 bytes. A copy that is appended to takes along the
    // room ahead of its text, so blocks stay small.
    static constexpr qsizetype blockUnits = 244;
    static constexpr qsizetype longestPacked = blockUnits / 2;

    static void addHolders(Block *block, int count)
    {
        block->ref_.storeRelaxed(block->ref_.loadRelaxed() + count);
    }

    void startBlock();

    QString::DataPointer m_block;
    char16_t *m_next = nullptr;
    qsizetype m_room = 0; ///< units from there to the block's end
};

/// One text that is given out over and over. Its holders are counted ahead of time, thousands at
/// once, so that giving it out touches no memory but the stock's own. Bound to the text's thread as
/// PackedTexts is.
class TextStock
{
public:
    TextStock() = default;
    ~TextStock() { giveBack(); }
    Q_DISABLE_COPY_MOVE(TextStock)

    /// Takes over a text of a PackedTexts.
    void fill(QString &&text);
    /// The text for one more holder.
    QString take()
    {
        if (!m_block)
            return {};
        if (m_left == 0) {
            m_left = countedAhead;
            PackedTexts::addHolders(m_block, countedAhead);
        }
        --m_left;
        return QString(QString::DataPointer(m_block, start(), m_size));
    }

    QStringView view() const { return m_block ? QStringView(start(), m_size) : QStringView(); }
    qsizetype size() const { return m_size; }

private:
    static constexpr quint16 countedAhead = 0xFFFF;

    char16_t *start() const
    {
        return reinterpret_cast<char16_t *>(reinterpret_cast<char *>(m_block) + m_offset);
    }
    void giveBack();

    // Sixteen bytes in all: a table of thousands is to stay in the processor's cache.
    PackedTexts::Block *m_block = nullptr;
    qint32 m_size = 0;
    quint16 m_offset = 0; ///< bytes from the block to the text
    quint16 m_left = 0;   ///< holders counted but not given out
};

} // namespace tarnwick
