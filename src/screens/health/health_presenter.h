#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/health/bar_model.h"
#include "screens/health/step_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Health screen shows. Follows the library; changes nothing in it.
class HealthPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasLibrary READ hasLibrary NOTIFY changed)
    Q_PROPERTY(QString missing READ missing NOTIFY changed)
    Q_PROPERTY(int missingTint READ missingTint NOTIFY changed)
    Q_PROPERTY(QString groups READ groups NOTIFY changed)
    Q_PROPERTY(int groupsTint READ groupsTint NOTIFY changed)
    Q_PROPERTY(QString untagged READ untagged NOTIFY changed)
    Q_PROPERTY(int untaggedTint READ untaggedTint NOTIFY changed)
    Q_PROPERTY(QString estimate READ estimate NOTIFY changed)
    Q_PROPERTY(QString genresNote READ genresNote NOTIFY changed)
    Q_PROPERTY(QString tempoNote READ tempoNote NOTIFY changed)
    Q_PROPERTY(bool hasSteps READ hasSteps NOTIFY changed)
    Q_PROPERTY(bool hasGenres READ hasGenres NOTIFY changed)
    Q_PROPERTY(tarnwick::StepModel *steps READ steps CONSTANT)
    Q_PROPERTY(tarnwick::BarModel *genres READ genres CONSTANT)
    Q_PROPERTY(tarnwick::BarModel *tempos READ tempos CONSTANT)

public:
    explicit HealthPresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasLibrary() const { return m_hasLibrary; }
    QString missing() const { return QString::number(m_missing); }
    int missingTint() const { return m_missing == 0 ? Tint::Good : Tint::Accent; }
    QString groups() const { return QString::number(m_groups); }
    int groupsTint() const { return m_groups == 0 ? Tint::Good : Tint::Warn; }
    QString untagged() const { return QString::number(m_untagged); }
    int untaggedTint() const { return m_untagged == 0 ? Tint::Good : Tint::Warn; }
    /// How long a clean-up takes.
    QString estimate() const;
    QString genresNote() const;
    QString tempoNote() const;
    bool hasSteps() const { return m_steps.rowCount() > 0; }
    bool hasGenres() const { return m_genres.rowCount() > 0; }
    StepModel *steps() { return &m_steps; }
    BarModel *genres() { return &m_genres; }
    BarModel *tempos() { return &m_tempos; }

    /// Goes to the screen of a step.
    Q_INVOKABLE void goTo(int step);

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    bool m_hasLibrary = false;
    int m_missing = 0;
    qsizetype m_groups = 0;
    int m_untagged = 0;
    int m_minutes = 0;
    int m_withGenre = 0;
    int m_withBpm = 0;
    StepModel m_steps;
    BarModel m_genres;
    BarModel m_tempos;
};

} // namespace tarnwick
