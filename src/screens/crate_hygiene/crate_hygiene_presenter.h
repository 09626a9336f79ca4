#pragma once

#include "app/app_state.h"
#include "screens/crate_hygiene/hygiene_model.h"
#include "screens/safety/write_gate_presenter.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Crate hygiene screen shows. Where what could be tidied in a large library is not worked
/// out yet the screen opens empty, and it comes a moment later.
class CrateHygienePresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasHygiene READ hasHygiene NOTIFY changed)
    Q_PROPERTY(tarnwick::WriteGatePresenter *gate READ gate CONSTANT)
    Q_PROPERTY(QString crates READ crates NOTIFY changed)
    Q_PROPERTY(QString overlaps READ overlaps NOTIFY changed)
    Q_PROPERTY(int overlapsTint READ overlapsTint NOTIFY changed)
    Q_PROPERTY(QString orphans READ orphans NOTIFY changed)
    Q_PROPERTY(int orphansTint READ orphansTint NOTIFY changed)
    Q_PROPERTY(QString variants READ variants NOTIFY changed)
    Q_PROPERTY(int variantsTint READ variantsTint NOTIFY changed)
    Q_PROPERTY(tarnwick::HygieneModel *rows READ rows CONSTANT)

public:
    explicit CrateHygienePresenter(AppState &app, QObject *parent = nullptr);

    bool hasHygiene() const { return bool(m_hygiene); }
    WriteGatePresenter *gate() { return &m_gate; }
    QString crates() const { return QString::number(m_app.crates().size()); }
    QString overlaps() const { return QString::number(overlapCount()); }
    int overlapsTint() const { return tintOf(overlapCount()); }
    QString orphans() const { return QString::number(orphanCount()); }
    int orphansTint() const { return tintOf(orphanCount()); }
    QString variants() const { return QString::number(variantCount()); }
    int variantsTint() const { return tintOf(variantCount()); }
    HygieneModel *rows() { return &m_rows; }

    /// Does what the button of a row says: merges, files or unifies.
    Q_INVOKABLE void act(const QString &key);

Q_SIGNALS:
    void changed();

private:
    void open();
    void look();
    void readLibrary();
    static int tintOf(size_t count);
    size_t overlapCount() const { return m_hygiene ? m_hygiene->overlaps.size() : 0; }
    size_t orphanCount() const { return m_hygiene ? size_t(m_hygiene->orphanCount) : 0; }
    size_t variantCount() const { return m_hygiene ? m_hygiene->genreVariants.size() : 0; }

    AppState &m_app;
    WriteGatePresenter m_gate;
    HygieneModel m_rows;
    std::shared_ptr<const CrateHygiene> m_hygiene; ///< null until it is there
};

} // namespace tarnwick
