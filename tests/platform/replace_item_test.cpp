#include "platform/files_write.h"
#include "support/fault_loop.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

namespace {

/// Makes an item of a kind: "nothing", "file", "folder" or "link".
void make(const QString &path, const QString &kind, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    if (kind == u"file"_s)
        put(path, content);
    if (kind == u"folder"_s) {
        put(path + u"/deep/inside"_s, content);
        put(path + u'/' + QString::fromLatin1(content), "x");
    }
    if (kind == u"link"_s)
        QFile::link(QString::fromLatin1(content), path);
}

Interruption replacing(const QString &oldKind, const QString &newKind)
{
    return {oldKind + u" by "_s + newKind,
            [=](const QString &folder) {
                make(folder + u"/snapshot/item"_s, newKind, "new");
                make(folder + u"/twin/item"_s, oldKind, "old");
                QDir().mkpath(folder + u"/library"_s);
                make(folder + u"/library/item"_s, oldKind, "old");
            },
            [](const QString &folder) {
                (void)replaceItem(folder + u"/snapshot/item"_s, folder + u"/library/item"_s);
            },
            [](const QString &folder) {
                auto tree = treeOf(folder + u"/library"_s);
                for (const QString &key : tree.keys()) {
                    if (!key.startsWith(u"item"_s))
                        tree.remove(key);
                }
                const bool isOld = tree == treeOf(folder + u"/twin"_s);
                const bool isNew = tree == treeOf(folder + u"/snapshot"_s);
                return isOld || isNew ? QString() : u"half: "_s + tree.keys().join(u'|');
            }};
}

QList<Interruption> cases()
{
    QList<Interruption> all;
    for (const auto &[oldKind, newKind] :
         std::initializer_list<std::pair<QString, QString>>{{u"nothing"_s, u"file"_s},
                                                            {u"nothing"_s, u"folder"_s},
                                                            {u"file"_s, u"file"_s},
                                                            {u"file"_s, u"folder"_s},
                                                            {u"file"_s, u"link"_s},
                                                            {u"folder"_s, u"file"_s},
                                                            {u"folder"_s, u"folder"_s},
                                                            {u"link"_s, u"file"_s}})
        all << replacing(oldKind, newKind);
    return all;
}

} // namespace

class ReplaceItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesEveryKindByEveryKind_data();
    void replacesEveryKindByEveryKind();
    void replacesWherePlacesCannotBeChanged_data() { replacesEveryKindByEveryKind_data(); }
    void replacesWherePlacesCannotBeChanged();
    void bringsTheOldOneBackWhereTheNewCannotCome();
    void leavesOldOrNewWhateverCallFails_data() { replacesEveryKindByEveryKind_data(); }
    void leavesOldOrNewWhateverCallFails();
    void leavesNothingBehindAFailure();
    void passesByWhatAnEarlierRunLeft();
};

void ReplaceItemTest::replacesEveryKindByEveryKind_data()
{
    QTest::addColumn<int>("index");
    const auto all = cases();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(qPrintable(all.at(i).name)) << i;
}

void ReplaceItemTest::replacesEveryKindByEveryKind()
{
    QFETCH(int, index);
    QTemporaryDir folder;
    const Interruption what = cases().at(index);
    what.prepare(folder.path());
    what.act(folder.path());
    QCOMPARE(treeOf(folder.filePath(u"library"_s)), treeOf(folder.filePath(u"snapshot"_s)));
}

void ReplaceItemTest::replacesWherePlacesCannotBeChanged()
{
    QFETCH(int, index);
    QTemporaryDir folder;
    const Interruption what = cases().at(index);
    what.prepare(folder.path());
    bool isFirst = true;
    const ScopedFaults faults([&isFirst](FileOperation operation, const QString &) {
        return operation == FileOperation::Rename && std::exchange(isFirst, false) ? EINVAL : 0;
    });
    const bool changesPlaces =
        what.name.contains(u"folder"_s) && !what.name.startsWith(u"nothing"_s);
    what.act(folder.path());
    const QString wanted = changesPlaces ? u"snapshot"_s : u"twin"_s;
    QCOMPARE(treeOf(folder.filePath(u"library"_s)), treeOf(folder.filePath(wanted)));
}

void ReplaceItemTest::bringsTheOldOneBackWhereTheNewCannotCome()
{
    QTemporaryDir folder;
    make(folder.filePath(u"snapshot/item"_s), u"folder"_s, "new");
    make(folder.filePath(u"library/item"_s), u"folder"_s, "old");
    const auto before = treeOf(folder.path());
    int renames = 0;
    const ScopedFaults faults([&renames](FileOperation operation, const QString &) {
        if (operation != FileOperation::Rename)
            return 0;
        ++renames; // places can't be changed; the old one steps aside; the new one can't come
        return renames == 1 ? EINVAL : renames == 3 ? EIO : 0;
    });
    QVERIFY(!replaceItem(folder.filePath(u"snapshot/item"_s), folder.filePath(u"library/item"_s)));
    QCOMPARE(renames, 4);
    QCOMPARE(treeOf(folder.path()), before);
}

void ReplaceItemTest::leavesOldOrNewWhateverCallFails()
{
    QFETCH(int, index);
    const Interruption what = cases().at(index);
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls >= 6, qPrintable(QString::number(report.calls)));
    }
}

void ReplaceItemTest::leavesNothingBehindAFailure()
{
    QTemporaryDir folder;
    make(folder.filePath(u"snapshot/item"_s), u"folder"_s, "new");
    make(folder.filePath(u"library/item"_s), u"folder"_s, "old");
    const auto before = treeOf(folder.path());
    const ScopedFaults faults([](FileOperation operation, const QString &path) {
        return operation == FileOperation::Flush && path.endsWith(u"/new"_s) ? ENOSPC : 0;
    });
    const Done done =
        replaceItem(folder.filePath(u"snapshot/item"_s), folder.filePath(u"library/item"_s));
    QVERIFY(!done);
    QCOMPARE(done.error().message,
             u"The file “item” couldn't be replaced: No space left on device."_s);
    QCOMPARE(treeOf(folder.path()), before);
}

void ReplaceItemTest::passesByWhatAnEarlierRunLeft()
{
    QTemporaryDir folder;
    make(folder.filePath(u"snapshot/item"_s), u"file"_s, "new");
    make(folder.filePath(u"library/item"_s), u"folder"_s, "old");
    put(folder.filePath(u"library/.item.twtmp/left"_s), "kept");
    put(folder.filePath(u"library/.item.twtmp2"_s), "kept");
    QVERIFY(replaceItem(folder.filePath(u"snapshot/item"_s), folder.filePath(u"library/item"_s)));
    QCOMPARE(contentOf(folder.filePath(u"library/item"_s)), QByteArray("new"));
    QCOMPARE(contentOf(folder.filePath(u"library/.item.twtmp/left"_s)), QByteArray("kept"));
    QCOMPARE(namesIn(folder.filePath(u"library"_s)),
             (QStringList{u".item.twtmp"_s, u".item.twtmp2"_s, u"item"_s}));
}

TARNWICK_FAULT_LOOP_MAIN(ReplaceItemTest, cases)
#include "replace_item_test.moc"
