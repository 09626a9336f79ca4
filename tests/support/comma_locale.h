#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <clocale>
#include <cstdlib>
#include <string>

namespace tarnwick::testing {

/// Lets the C library write and read numbers with a decimal comma, for the guard's life. Where the
/// machine has no such locale, one is made on the spot.
class ScopedCommaLocale
{
public:
    ScopedCommaLocale()
        : m_before(std::setlocale(LC_ALL, nullptr))
    {
        static const QTemporaryDir folder;
        static const bool known = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") || make(folder);
        if (!known ||
            !(std::setlocale(LC_NUMERIC, "de_DE.UTF-8") || std::setlocale(LC_NUMERIC, "comma")) ||
            std::strtod("1,5", nullptr) != 1.5)
            qFatal("no locale with a decimal comma: is Debian's package locales installed?");
    }
    ~ScopedCommaLocale() { std::setlocale(LC_ALL, m_before.c_str()); }
    ScopedCommaLocale(const ScopedCommaLocale &) = delete;
    ScopedCommaLocale &operator=(const ScopedCommaLocale &) = delete;

private:
    static bool make(const QTemporaryDir &folder)
    {
        QFile definition(folder.filePath(QStringLiteral("definition")));
        if (!definition.open(QIODevice::WriteOnly))
            return false;
        definition.write("LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\n"
                         "END LC_NUMERIC\n");
        definition.close();
        // Complains of all that the definition leaves out, and makes the locale all the same.
        QProcess::execute(QStringLiteral("localedef"),
                          {QStringLiteral("--quiet"), QStringLiteral("-c"), QStringLiteral("-i"),
                           definition.fileName(), folder.filePath(QStringLiteral("comma"))});
        return qputenv("LOCPATH", QFile::encodeName(folder.path()));
    }

    const std::string m_before;
};

} // namespace tarnwick::testing
