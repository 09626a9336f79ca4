// Runs a fuzz target without a fuzzer, built by any compiler.
//
//   NAME_fuzz FILE-OR-FOLDER...                      over these files, once each
//   NAME_fuzz --seeds-are-read FILE-OR-FOLDER...     likewise; a seed that is not read is a find
//   NAME_fuzz --mutate NUMBER --keep FOLDER FILE-OR-FOLDER...
//       likewise, and over so many inputs made of them at random; one that ends the process is in
//       the folder then, as "crash-" and a number
//
// What it tells at the end is how many inputs were run.

#include "fuzz_input.h"
#include "mutation.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

using namespace tarnwick::fuzzing;

namespace {

QStringList filesIn(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return {path};
    QStringList files;
    QDirIterator entries(path, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext())
        files << entries.next();
    files.sort();
    return files;
}

/// In memory of exactly its size, so that a sanitizer sees any step beyond.
Input inputOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "can't read %s\n", qPrintable(path));
        std::exit(1);
    }
    const QByteArray content = file.readAll();
    return Input(content.begin(), content.end());
}

// The input under way, for a process that is about to end over it.
const Input *present = nullptr;
QByteArray keptAs;

/// Runs the target over a file of the corpus.
void replay(const QString &file, const Input &input, bool seedsAreRead)
{
    std::printf("%s\n", qPrintable(file));
    std::fflush(stdout);
    const long readBefore = inputsRead;
    LLVMFuzzerTestOneInput(input.data(), input.size());
    const bool isSeed = QFileInfo(file).fileName().startsWith(QStringLiteral("seed-"));
    const bool mustBeRead = seedsAreRead && isSeed;
    require(!mustBeRead || inputsRead > readBefore, "a seed is read");
}

void keepInput(int number)
{
    const int file = ::open(keptAs.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const bool isKept =
        file >= 0 && ::write(file, present->data(), present->size()) == ssize_t(present->size());
    ::_exit(isKept ? 128 + number : 1);
}

void runMutations(const std::vector<Input> &inputs, long count, const QString &folder)
{
    const auto seed = unsigned(QDateTime::currentMSecsSinceEpoch());
    keptAs = QFile::encodeName(folder + QStringLiteral("/crash-%1").arg(seed));
    for (const int number : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(number, keepInput);
    Mutation mutation(seed);
    for (long i = 0; i < count; ++i) {
        const Input input = mutation.drawFrom(inputs);
        present = &input;
        LLVMFuzzerTestOneInput(input.data(), input.size());
        if (i % 10'000 == 0) {
            std::printf("%ld inputs so far\n", long(inputs.size()) + i);
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QFile::decodeName(argv[i]);
    long count = 0;
    QString folder;
    const bool seedsAreRead = arguments.removeAll(QStringLiteral("--seeds-are-read")) > 0;
    if (arguments.value(0) == QStringLiteral("--mutate")) {
        count = arguments.value(1).toLong();
        folder = arguments.value(3);
        arguments.remove(0, 4);
    }
    std::vector<Input> inputs;
    LLVMFuzzerTestOneInput(nullptr, 0); // as a fuzzer begins
    for (const QString &path : arguments) {
        for (const QString &file : filesIn(path)) {
            inputs.push_back(inputOf(file));
            replay(file, inputs.back(), seedsAreRead);
        }
    }
    if (!inputs.empty())
        runMutations(inputs, count, folder);
    std::printf("%ld inputs\n", long(inputs.size()) + count);
    return inputs.empty() ? 1 : 0;
}
