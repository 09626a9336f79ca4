// Signal's settings, interrupted: whichever call of the system fails, and wherever the process is
// killed, what the next launch reads is the old settings, the new ones, or such as share nothing;
// and nobody but their owner can read the file that holds the crew's key.

#include "signal/signal_config.h"
#include "support/fault_loop.h"
#include "support/safety_records.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const SignalConfig old = {.serverUrl = u"https://old.example"_s,
                          .djHash = u"0F8FAD5B-D9CB-469F-A165-70867728950E"_s,
                          .city = u"Zürich"_s,
                          .optIn = true,
                          .apiKey = u"old key"_s};
const SignalConfig young = {.serverUrl = u"https://new.example/with/a/longer/path"_s,
                            .djHash = old.djHash,
                            .city = u"Bern"_s,
                            .optIn = true,
                            .apiKey = u"new key"_s};

constexpr int ownerOnly = 0600;

QString fileIn(const QString &folder)
{
    return dataIn(folder, u"signal.json"_s);
}

void prepareNothing(const QString &folder)
{
    keepDataIn(folder);
}

void prepareOld(const QString &folder)
{
    keepDataIn(folder);
    old.save();
}

/// Somebody has let others read the file.
void prepareOpenFile(const QString &folder)
{
    prepareOld(folder);
    if (::chmod(QFile::encodeName(fileIn(folder)).constData(), 0644) != 0)
        qFatal("can't set permission bits");
}

void load(const QString &folder)
{
    keepDataIn(folder);
    (void)SignalConfig::loadOrCreate();
}

void save(const QString &folder)
{
    keepDataIn(folder);
    young.save();
}

bool isBlank(const SignalConfig &config)
{
    return config == SignalConfig{.djHash = config.djHash} && config.djHash.size() == 36;
}

/// Asked ahead of any look at the settings, which may write them.
QString troubleWithKey(const QString &folder, const QString &key)
{
    const QByteArray content = contentOf(fileIn(folder));
    if (content.contains(key.toUtf8()) && modeOf(fileIn(folder)) != ownerOnly)
        return u"others can read the key"_s;
    return {};
}

/// What settings must be to stay, and to be written again.
QString troubleLater()
{
    const SignalConfig present = SignalConfig::loadOrCreate();
    if (SignalConfig::loadOrCreate() != present)
        return u"the settings that were made don't stay"_s;
    young.save();
    return SignalConfig::loadOrCreate() == young ? QString() : u"they can't be saved any more"_s;
}

/// `key` must be nobody else's; the settings are one of these, or blank where they may be.
QString troubleWith(const QString &folder, const QString &key, const QList<SignalConfig> &states,
                    bool mayBeBlank)
{
    keepDataIn(folder);
    QDir().mkpath(dataIn(folder)); // as each launch does, which this is none of
    if (const QString trouble = troubleWithKey(folder, key); !trouble.isEmpty())
        return trouble;
    const SignalConfig found = SignalConfig::loadOrCreate();
    if (!states.contains(found) && !(mayBeBlank && isBlank(found)))
        return u"the settings are neither old nor new"_s;
    if (const QString trouble = troubleLater(); !trouble.isEmpty())
        return trouble;
    return troubleWithKey(folder, young.apiKey);
}

QList<Interruption> cases()
{
    const auto troubleOfSave = [](const QString &folder) {
        return troubleWith(folder, young.apiKey, {old, young}, true);
    };
    const auto troubleOfSaveIfFailed = [](const QString &folder) {
        // Once it is being written over, the file has nothing that could come back.
        return troubleWith(folder, young.apiKey, {old, young}, contentOf(fileIn(folder)).isEmpty());
    };
    return {{u"first"_s, prepareNothing, load,
             [](const QString &folder) { return troubleWith(folder, old.apiKey, {}, true); }},
            {u"load"_s, prepareOld, load,
             [](const QString &folder) { return troubleWith(folder, old.apiKey, {old}, true); },
             nullptr,
             // One reading that fails costs nothing: the file is read again ahead of a write.
             [](const QString &folder) { return troubleWith(folder, old.apiKey, {old}, false); }},
            {u"save"_s, prepareOld, save, troubleOfSave, nullptr, troubleOfSaveIfFailed},
            {u"save over an open file"_s, prepareOpenFile, save, troubleOfSave, nullptr,
             troubleOfSaveIfFailed}};
}

} // namespace

class SignalConfigFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsSettingsWholeAndTheKeySecretWhateverCallFails_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < cases().size(); ++i)
            QTest::addRow("%s", qPrintable(cases().at(i).name)) << i;
    }
    void keepsSettingsWholeAndTheKeySecretWhateverCallFails()
    {
        QFETCH(const int, index);
        const Interruption what = cases().at(index);
        for (const FaultReport &report : interruptInEveryWay(what)) {
            QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
            QVERIFY2(report.calls >= 4, qPrintable(QString::number(report.calls)));
        }
    }
};

TARNWICK_FAULT_LOOP_MAIN(SignalConfigFaultsTest, cases)
#include "signal_config_faults_test.moc"
