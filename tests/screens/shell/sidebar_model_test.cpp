#include "screens/shell/sidebar_model.h"

#include "support/track_builder.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QStringList column(const SidebarModel &model, int role)
{
    QStringList values;
    for (int row = 0; row < model.rowCount(); ++row)
        values += model.index(row).data(role).toString();
    return values;
}

} // namespace

class SidebarModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsEveryScreenOfEveryGroup()
    {
        SidebarModel model;
        const QAbstractItemModelTester tester(&model);
        const QStringList titles = {
            u"Library score"_s, u"Health"_s,        u"Library & safety"_s, u"Fix queue"_s,
            u"Duplicates"_s,    u"Missing files"_s, u"Cues & grids"_s,     u"Versions"_s,
            u"Track ID"_s,      u"Gig check"_s,     u"Gig run"_s,          u"Loudness"_s,
            u"Stems"_s,         u"Crate hygiene"_s, u"Suggestions"_s,      u"What's landing"_s,
            u"Transitions"_s,   u"Debrief"_s,       u"Booth companion"_s,  u"Community IDs"_s,
            u"Always clean"_s,  u"Change log"_s,    u"USB & export"_s,     u"Account"_s,
        };
        QCOMPARE(column(model, SidebarModel::TitleRole), titles);
    }

    void headsTheFirstRowOfEachGroup()
    {
        const SidebarModel model;
        QStringList headings = column(model, SidebarModel::HeadingRole);
        QCOMPARE(headings[0], u"Overview"_s);
        QCOMPARE(headings[4], u"Repair"_s);
        QCOMPARE(headings[21], u"Export"_s);
        headings.removeAll({});
        QCOMPARE(headings, QStringList({u"Overview"_s, u"Repair"_s, u"Prep"_s, u"Play"_s,
                                        u"Automate"_s, u"Export"_s, u"Account"_s}));
    }

    void dimsWhatIsNotBuilt()
    {
        const SidebarModel model;
        for (int row = 0; row < model.rowCount(); ++row) {
            const ScreenInfo &info = infoOf(model.screenAt(row));
            QCOMPARE(model.index(row).data(SidebarModel::ImplementedRole), info.isImplemented);
            QCOMPARE(model.index(row).data(SidebarModel::SymbolRole), info.symbol);
        }
    }

    void namesTheKeysOfTheFirstNineRows()
    {
        const SidebarModel model;
        const QStringList keys = column(model, SidebarModel::ShortcutRole);
        QCOMPARE(keys.first(9),
                 QStringList({u"Ctrl+1"_s, u"Ctrl+2"_s, u"Ctrl+3"_s, u"Ctrl+4"_s, u"Ctrl+5"_s,
                              u"Ctrl+6"_s, u"Ctrl+7"_s, u"Ctrl+8"_s, u"Ctrl+9"_s}));
        QCOMPARE(keys.sliced(9).join(QString()), QString());
    }

    void selectsOneRow()
    {
        SidebarModel model;
        const QAbstractItemModelTester tester(&model);
        QCOMPARE(column(model, SidebarModel::SelectedRole).count(u"true"_s), 1);
        QCOMPARE(model.index(0).data(SidebarModel::SelectedRole), true);
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.setSelection(Screen::Missing);
        QCOMPARE(column(model, SidebarModel::SelectedRole).count(u"true"_s), 1);
        QCOMPARE(model.index(5).data(SidebarModel::SelectedRole), true);
        QCOMPARE(reset.count(), 0);
    }

    void badgesFollowTheLibrary()
    {
        SidebarModel model;
        const QAbstractItemModelTester tester(&model);
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const Derived library(scanOf({lost(u"Ash"_s, u"Dawn"_s)}));
        model.setFigures(&library, 0);
        QCOMPARE(model.index(5).data(SidebarModel::BadgeRole), u"1"_s);
        model.setFigures(nullptr, 7);
        QCOMPARE(column(model, SidebarModel::BadgeRole).join(QString()), QString());
        QCOMPARE(reset.count(), 0);
    }
};

QTEST_GUILESS_MAIN(SidebarModelTest)
#include "sidebar_model_test.moc"
