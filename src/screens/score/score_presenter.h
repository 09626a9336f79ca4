#pragma once

#include "app/app_state.h"
#include "screens/components/tint.h"
#include "screens/score/dimension_model.h"

#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// What the Library score shows. Follows the library while it lives; changes nothing in it.
class ScorePresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(bool hasScore READ hasScore NOTIFY changed)
    Q_PROPERTY(int score READ score NOTIFY changed)
    Q_PROPERTY(int tint READ tint NOTIFY changed)
    Q_PROPERTY(QString grade READ grade NOTIFY changed)
    Q_PROPERTY(QString source READ source NOTIFY changed)
    Q_PROPERTY(QString nextName READ nextName NOTIFY changed)
    Q_PROPERTY(QString nextDetail READ nextDetail NOTIFY changed)
    Q_PROPERTY(QString nextButton READ nextButton NOTIFY changed)
    Q_PROPERTY(tarnwick::DimensionModel *dimensions READ dimensions CONSTANT)

public:
    explicit ScorePresenter(AppState &app, QObject *parent = nullptr);

    /// False without a library: then nothing is shown.
    bool hasScore() const { return m_hasScore; }
    int score() const { return m_score; }
    int tint() const;
    QString grade() const { return m_grade; }
    /// Where the figures come from.
    QString source() const { return m_source; }

    /// The one thing to do now: the worst dimension.
    QString nextName() const { return Dimension::rawValue(m_worst.kind); }
    QString nextDetail() const { return m_worst.detail; }
    QString nextButton() const;
    DimensionModel *dimensions() { return &m_dimensions; }

    /// Goes to the screen of the worst dimension.
    Q_INVOKABLE void goToNext();

Q_SIGNALS:
    void changed();

private:
    void readLibrary();

    AppState &m_app;
    bool m_hasScore = false;
    int m_score = 0;
    QString m_grade;
    QString m_source;
    Dimension m_worst;
    DimensionModel m_dimensions;
};

} // namespace tarnwick
