// Merging two crates, interrupted at every call of the system: nothing of a crate is ever lost or
// half written, and what the log tells of has happened.

#include "app/app_state.h"

#include "platform/volumes.h"
#include "support/fault_loop.h"
#include "support/scoped_environment.h"
#include "support/serato_builder.h"
#include "support/test_files.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray crateOf(const QStringList &entries)
{
    QByteArray bytes = crateVersion();
    for (const QString &entry : entries)
        bytes += crateEntry(entry);
    return bytes;
}

const QByteArray keptBefore = crateOf({u"1"_s, u"2"_s, u"3"_s});
const QByteArray keptAfter = crateOf({u"1"_s, u"2"_s, u"3"_s, u"4"_s});
/// What the rule for a crate that can't be read leads to.
const QByteArray keptUnread = crateOf({u"3"_s, u"4"_s});
const QByteArray folded =
    crateVersion() + record("osrt", "sort") + crateEntry(u"3") + crateEntry(u"/4");

/// A user in a folder, with one AppState that has scanned the library.
class User
{
public:
    explicit User(const QString &folder)
        : m_volumes({folder + u"/volumes"_s})
        , m_home("HOME", folder.toUtf8() + "/home")
        , m_data("XDG_DATA_HOME", folder.toUtf8() + "/data")
        , m_app(AppState::Environment::Ignored)
    {
        m_app.rescan();
        m_isReady = QTest::qWaitFor([this] { return m_app.pendingTasks() == 0; }, 20000);
    }

    bool isReady() const { return m_isReady && m_app.result(); }
    const AppState &app() const { return m_app; }

    void merge()
    {
        if (m_app.crates().size() == 2)
            m_app.mergeCrates({.id = {}, .a = m_app.crates()[0], .b = m_app.crates()[1]});
    }

private:
    platform::ScopedVolumeFolders m_volumes;
    ScopedVariable m_home;
    ScopedVariable m_data;
    AppState m_app;
    bool m_isReady;
};

std::unique_ptr<User> user;

QString subcrate(const QString &folder, const QString &name)
{
    return folder + u"/home/Music/_Serato_/Subcrates/"_s + name;
}

void makeLibrary(const QString &folder)
{
    put(folder + u"/home/Music/_Serato_/database V2"_s, databaseVersion());
    put(subcrate(folder, u"Keep.crate"_s), keptBefore);
    put(subcrate(folder, u"Fold.crate"_s), folded);
}

void arrive(const QString &folder)
{
    user.reset();
    user = std::make_unique<User>(folder);
    if (!user->isReady())
        qFatal("the library can't be scanned");
}

void merge(const QString &)
{
    user->merge();
}

/// The folded crate where it was put away; empty if it is not.
QByteArray heldCrate(const QString &folder)
{
    const auto holding = treeOf(folder + u"/data/Tarnwick/Holding"_s);
    for (const auto &[name, content] : holding.asKeyValueRange()) {
        if (name.endsWith(u"/Fold.crate"_s))
            return content;
    }
    return {};
}

QString troubleWithFiles(const QString &folder, const QByteArrayList &keptStates)
{
    const QByteArray kept = contentOf(subcrate(folder, u"Keep.crate"_s));
    const QByteArray inPlace = contentOf(subcrate(folder, u"Fold.crate"_s));
    const QByteArray held = heldCrate(folder);
    if (!keptStates.contains(kept))
        return u"the crate that stays is neither the old nor the new one"_s;
    if ((inPlace == folded) == (held == folded))
        return u"the folded crate is not whole in its place or whole in holding"_s;
    if (held == folded && kept == keptBefore)
        return u"the folded crate is gone, and its tracks were not added"_s;
    for (const QString &name : namesIn(subcrate(folder, {}))) {
        if (!QStringList{u"Keep.crate"_s, u"Fold.crate"_s, u".Keep.crate.twtmp"_s}.contains(name))
            return u"a stray file: "_s + name;
    }
    return {};
}

/// What a process that comes later sees, and whether it can go on.
QString troubleLater(const QString &folder, const QByteArrayList &finalStates)
{
    arrive(folder);
    const bool wasHeld = heldCrate(folder) == folded;
    if (!user->app().changeEntries().isEmpty() && !wasHeld)
        return u"the log tells of a merge that did not happen"_s;
    merge(folder);
    const bool goneWell = wasHeld || (user->app().toast() && user->app().toast()->reversible);
    if (!goneWell || heldCrate(folder) != folded)
        return u"the crates can't be merged from then on"_s;
    if (!finalStates.contains(contentOf(subcrate(folder, u"Keep.crate"_s))))
        return u"merging again goes wrong"_s;
    return {};
}

QString troubleWith(const QString &folder, const QByteArrayList &keptStates)
{
    user.reset();
    QString trouble = troubleWithFiles(folder, keptStates);
    if (trouble.isEmpty())
        trouble = troubleLater(folder, keptStates.sliced(1));
    user.reset();
    return trouble;
}

QList<Interruption> cases()
{
    return {{u"merge"_s, makeLibrary, merge,
             [](const QString &folder) {
                 return troubleWith(folder, {keptBefore, keptAfter});
             },
             arrive,
             [](const QString &folder) {
                 return troubleWith(folder, {keptBefore, keptAfter, keptUnread});
             }}};
}

} // namespace

class MergeFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { user.reset(); }

    void anUninterruptedMergeEndsWell()
    {
        const QTemporaryDir folder(placeForRuns());
        makeLibrary(folder.path());
        arrive(folder.path());
        merge(folder.path());
        QCOMPARE(user->app().toast()->message, u"Merged Fold into Keep"_s);
        QCOMPARE(contentOf(subcrate(folder.path(), u"Keep.crate"_s)), keptAfter);
        QCOMPARE(heldCrate(folder.path()), folded);
        QCOMPARE(troubleWith(folder.path(), {keptBefore, keptAfter}), QString());
    }

    void losesNoCrateWhateverCallFails()
    {
        for (const FaultReport &report : interruptInEveryWay(cases().first())) {
            QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
            QVERIFY2(report.calls >= 40, QByteArray::number(report.calls));
        }
    }
};

TARNWICK_FAULT_LOOP_MAIN(MergeFaultsTest, cases)
#include "merge_faults_test.moc"
