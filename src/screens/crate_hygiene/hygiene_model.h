#pragma once

#include "analysis/crate_hygiene.h"
#include "screens/components/keyed_list_model.h"

#include <QtQml/qqmlregistration.h>

#include <memory>

namespace tarnwick {

/// All that could be tidied, as rows of one list: the crates that are nearly the same under their
/// heading, the tracks in no crate, the genres under theirs. Where there are none of a kind, a line
/// says so.
class HygieneModel : public KeyedListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Kind { OverlapHead, NoOverlaps, Overlap, Orphans, GenreHead, NoVariants, Variant };
    enum Role {
        KeyRole = Qt::UserRole,
        HeadingRole, ///< of a heading: what it says
        PraiseRole,  ///< where there is nothing to do: what is said instead
        LeadRole,    ///< what stands ahead of the two lines: a percentage
        SymbolRole,  ///< or a symbol
        TintRole,    ///< of either
        TitleRole,
        DetailRole,
        ActionRole, ///< what the button says; empty without one
        ActionSymbolRole,
        OpensRole,  ///< whether a card begins with the row
        ClosesRole, ///< or ends
        RuledRole,  ///< whether a rule parts it from the row above
        ActsRole,
    };

    using KeyedListModel::KeyedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Null for no rows.
    void setHygiene(std::shared_ptr<const CrateHygiene> hygiene);

    struct Row
    {
        Kind kind;
        size_t entry; ///< among those of its kind
    };
    /// The row of a key; nothing where it is no longer there.
    std::optional<Row> rowOf(const QString &key) const;

private:
    void add(const Row &row, const QString &key, QStringList &keys);
    QVariant textData(const Row &row, int role) const;
    QVariant overlapData(const CrateHygiene::Overlap &overlap, int role) const;
    QVariant orphansData(int role) const;
    QVariant variantData(const CrateHygiene::GenreVariant &variant, int role) const;
    bool closes(const Row &row) const;

    std::shared_ptr<const CrateHygiene> m_hygiene;
    std::vector<Row> m_rows;
};

} // namespace tarnwick
