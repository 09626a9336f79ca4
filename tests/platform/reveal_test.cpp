#include "platform/reveal.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class RevealTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesAllToTheInnermostGuard()
    {
        QStringList shown;
        const auto into = [&shown](const QString &name) {
            return [&shown, name](const QString &path) { shown += name + path; };
        };
        const platform::ScopedFileManager outer(into(u"outer "_s));
        {
            const platform::ScopedFileManager inner(into(u"inner "_s));
            platform::revealInFileManager(u"/a"_s);
        }
        platform::revealInFileManager(u"/b"_s);
        QCOMPARE(shown, QStringList({u"inner /a"_s, u"outer /b"_s}));
    }
};

QTEST_APPLESS_MAIN(RevealTest)
#include "reveal_test.moc"
