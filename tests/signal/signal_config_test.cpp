#include "signal/signal_config.h"

#include "platform/fault_gate.h"
#include "support/scoped_environment.h"
#include "support/test_folder.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <cerrno>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"Tarnwick/signal.json"_s;

const SignalConfig example = {.serverUrl = u" https://signal.example/crew "_s,
                              .djHash = u"0F8FAD5B-D9CB-469F-A165-70867728950E"_s,
                              .city = u"Zürich \"Süd\""_s,
                              .optIn = true,
                              .apiKey = u"key/with\\slashes"_s};

/// JSON with other quotation marks, to be read at all.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

const QByteArray exampleFile = json("{\n"
                                    "  'apiKey': 'key/with\\\\slashes',\n"
                                    "  'city': 'Zürich \\'Süd\\'',\n"
                                    "  'djHash': '0F8FAD5B-D9CB-469F-A165-70867728950E',\n"
                                    "  'optIn': true,\n"
                                    "  'serverURL': ' https://signal.example/crew '\n"
                                    "}\n");

bool isUuidInUpperCase(const QString &text)
{
    static const QRegularExpression form(
        u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
    return form.match(text).hasMatch();
}

QFile::Permissions permissionsOf(const QString &path)
{
    const QFile::Permissions ofUsers = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                       QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                       QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    return QFileInfo(path).permissions() & ofUsers;
}

} // namespace

class SignalConfigTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsOneIdentityForAllThatStartAtOnce();
    void init()
    {
        m_folder = std::make_unique<TestFolder>();
        m_data = std::make_unique<ScopedVariable>("XDG_DATA_HOME", m_folder->path().toUtf8());
    }
    void cleanup()
    {
        m_data.reset();
        m_folder.reset();
    }

    void createsSettingsThatShareNothing()
    {
        const SignalConfig config = SignalConfig::loadOrCreate();
        QCOMPARE(config.serverUrl, QString());
        QCOMPARE(config.city, QString());
        QCOMPARE(config.apiKey, QString());
        QVERIFY(!config.optIn);
        QVERIFY2(isUuidInUpperCase(config.djHash), qPrintable(config.djHash));
    }

    void keepsTheIdentityThatItMadeOnce()
    {
        const SignalConfig first = SignalConfig::loadOrCreate();
        QCOMPARE(SignalConfig::loadOrCreate(), first);
        QVERIFY(QFile::remove(m_folder->path(fileName)));
        QVERIFY(SignalConfig::loadOrCreate().djHash != first.djHash);
    }

    void writesItsFileInOneForm()
    {
        example.save();
        QCOMPARE(m_folder->read(fileName), exampleFile);
    }

    void readsWhatItWrote()
    {
        example.save();
        QCOMPARE(SignalConfig::loadOrCreate(), example);
        QCOMPARE(m_folder->read(fileName), exampleFile);
    }

    void letsOnlyItsOwnerReadTheFile()
    {
        const QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
        (void)SignalConfig::loadOrCreate();
        const QString path = m_folder->path(fileName);
        QCOMPARE(permissionsOf(path), ownerOnly);
        QVERIFY(QFile::setPermissions(path, ownerOnly | QFile::ReadGroup | QFile::ReadOther));
        example.save();
        QCOMPARE(permissionsOf(path), ownerOnly);
    }

    void readsAnyJsonOfTheRightShape_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("compact, in another order")
            << json("{'serverURL':'s','optIn':true,'djHash':'D','city':'c','apiKey':'k'}");
        QTest::newRow("with more in it") << json(
            "{'apiKey':'k','city':'c','djHash':'D','new':[{}],'optIn':true,'serverURL':'s'}");
        QTest::newRow("escaped") << json(
            "{'apiKey':'\\u006b','city':'c','djHash':'D','optIn':true,'serverURL':'s'} ");
    }
    void readsAnyJsonOfTheRightShape()
    {
        QFETCH(QByteArray, file);
        m_folder->write(fileName, file);
        const SignalConfig expected = {u"s"_s, u"D"_s, u"c"_s, true, u"k"_s};
        QCOMPARE(SignalConfig::loadOrCreate(), expected);
        QCOMPARE(m_folder->read(fileName), file);
    }

    void replacesAFileThatIsNoGood_data()
    {
        QTest::addColumn<QByteArray>("file");
        const auto row = [](const char *name, const QByteArray &file) {
            QTest::newRow(name) << file;
        };
        row("empty", "");
        row("no JSON", "serverURL=s");
        row("cut short", exampleFile.first(exampleFile.size() - 4));
        row("a list", "[" + exampleFile + "]");
        row("more behind it", exampleFile + "{}");
        for (const QByteArray key : {"apiKey", "city", "djHash", "optIn", "serverURL"}) {
            const QByteArray other = "\"" + key + "Not\"";
            row(("without " + key).constData(),
                QByteArray(exampleFile).replace("\"" + key + "\"", other));
        }
        row("a null", QByteArray(exampleFile).replace("true", "null"));
        row("a Boolean as text", QByteArray(exampleFile).replace("true", "\"true\""));
        row("a Boolean as number", QByteArray(exampleFile).replace("true", "1"));
        row("a text as number",
            QByteArray(exampleFile).replace(json("'key/with\\\\slashes'"), "7"));
        row("bad UTF-8", QByteArray(exampleFile).replace("Z", "\xff"));
    }
    void replacesAFileThatIsNoGood()
    {
        QFETCH(QByteArray, file);
        m_folder->write(fileName, file);
        const SignalConfig config = SignalConfig::loadOrCreate();
        QVERIFY(config.djHash != example.djHash);
        QVERIFY(isUuidInUpperCase(config.djHash));
        QCOMPARE(config, (SignalConfig{.djHash = config.djHash}));
        QVERIFY(m_folder->read(fileName) != file);
        QCOMPARE(SignalConfig::loadOrCreate(), config);
    }

    void goesOnWhereNothingCanBeSaved()
    {
        const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
            return operation == platform::FileOperation::Write ? ENOSPC : 0;
        });
        QVERIFY(isUuidInUpperCase(SignalConfig::loadOrCreate().djHash));
        example.save();
    }

    void makesNewSettingsWhereTheFileCannotBeRead()
    {
        example.save();
        const platform::ScopedFaults faults(
            [](platform::FileOperation operation, const QString &path) {
                const bool isOurs = path.endsWith(u"/signal.json"_s);
                return isOurs && operation == platform::FileOperation::Read ? EIO : 0;
            });
        QVERIFY(SignalConfig::loadOrCreate().djHash != example.djHash);
    }

private:
    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<ScopedVariable> m_data;
};

void SignalConfigTest::beginsOneIdentityForAllThatStartAtOnce()
{
    const TestFolder folder;
    const ScopedVariable data("XDG_DATA_HOME", folder.path().toUtf8());
    folder.makeFolder(u"Tarnwick"_s);
    for (int round = 0; round < 50; ++round) {
        QFile::remove(folder.path(fileName));
        QString other;
        std::thread starting([&other] { other = SignalConfig::loadOrCreate().djHash; });
        const QString own = SignalConfig::loadOrCreate().djHash;
        starting.join();
        QCOMPARE(own, other);
        QCOMPARE(SignalConfig::loadOrCreate().djHash, own);
    }
}

QTEST_GUILESS_MAIN(SignalConfigTest)
#include "signal_config_test.moc"
