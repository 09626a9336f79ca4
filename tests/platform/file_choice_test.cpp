#include "platform/file_choice.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class FileChoiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksNobodyWithoutADialog()
    {
        bool chosen = false;
        platform::chooseFile({.message = u"Find it"_s}, [&](const QString &) { chosen = true; });
        QVERIFY(!chosen);
    }

    void asksTheDialogOfTheInnermostGuard()
    {
        QStringList asked;
        const auto dialogOf = [&](const QString &answer) {
            return [&asked, answer](const platform::FileQuestion &question,
                                    const platform::FileChosen &chosen) {
                asked += question.message;
                chosen(answer);
            };
        };
        QString path;
        const auto choose = [&] {
            platform::chooseFile({.message = u"Find it"_s},
                                 [&](const QString &file) { path = file; });
        };
        const platform::ScopedFileDialog window(dialogOf(u"/a"_s));
        {
            const platform::ScopedFileDialog inner(dialogOf(u"/b"_s));
            choose();
            QCOMPARE(path, u"/b"_s);
        }
        choose();
        QCOMPARE(path, u"/a"_s);
        QCOMPARE(asked, QStringList({u"Find it"_s, u"Find it"_s}));
    }
};

QTEST_APPLESS_MAIN(FileChoiceTest)
#include "file_choice_test.moc"
