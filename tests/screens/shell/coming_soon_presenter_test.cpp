#include "screens/shell/coming_soon_presenter.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ComingSoonPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatIsToCome()
    {
        const ComingSoonPresenter presenter(Screen::Booth);
        QCOMPARE(presenter.title(), u"Booth companion"_s);
        QCOMPARE(presenter.symbol(), u"iphone"_s);
        QCOMPARE(presenter.note(), u"Play / backend — Phase 6"_s);
        QCOMPARE(presenter.text(),
                 u"Phase 1 ships the read-only core — the Serato parser, the library scan, and the "
                 "Library score / Health / Library & safety screens, all driven by your real "
                 "library. Booth companion arrives in a later phase and will read from the same "
                 "store, so every number here already accounts for it."_s);
    }

    void keepsTheNoteOfAScreensPhase()
    {
        QCOMPARE(ComingSoonPresenter(Screen::FixQueue).note(), u"Repair — Phase 3"_s);
    }
};

QTEST_APPLESS_MAIN(ComingSoonPresenterTest)
#include "coming_soon_presenter_test.moc"
