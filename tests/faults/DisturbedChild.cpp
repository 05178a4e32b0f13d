// SPDX-License-Identifier: MIT
#include "tests/faults/DisturbedChild.h"

#include <QFile>
#include <QString>

#include <array>
#include <csignal>
#include <cstring>

#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kPatienceSeconds = 30;
constexpr std::size_t kNoteRoom = 65536;

/// The results that the child leaves for this process.
struct Shared
{
    lumi::faults::Tally tally;
    int warnings = 0;
    std::array<char, kNoteRoom> notes{}; ///< one line for each note
};

Shared *shared()
{
    static void *const kMemory = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE,
                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (kMemory == MAP_FAILED) {
        qFatal("no shared memory");
    }
    return static_cast<Shared *>(kMemory);
}

LumiArmFaults *arm()
{
    static auto *const kArm
        = reinterpret_cast<LumiArmFaults *>(::dlsym(RTLD_DEFAULT, "lumiArmFaults"));
    return kArm;
}

void countWarning(QtMsgType type, const QMessageLogContext & /*context*/, const QString & /*text*/)
{
    shared()->warnings += type == QtWarningMsg ? 1 : 0;
}

[[noreturn]] void work(const lumi::faults::Plan &plan, const std::function<int()> &job)
{
    ::alarm(kPatienceSeconds);
    qInstallMessageHandler(countWarning);
    arm()(&plan, &shared()->tally);
    const int result = job();
    arm()(nullptr, nullptr);
    ::_exit(result);
}

} // namespace

namespace lumi::test {

void note(const QString &text)
{
    const QByteArray line = text.toUtf8() + '\n';
    const std::size_t length = std::strlen(shared()->notes.data());
    if (length + static_cast<std::size_t>(line.size()) < kNoteRoom) {
        std::memcpy(shared()->notes.data() + length, line.constData(),
                    static_cast<std::size_t>(line.size()) + 1);
    }
}

bool isLibraryLoaded()
{
    return arm() != nullptr;
}

Ending runInChild(faults::Plan plan, const QStringList &folders, const std::function<int()> &job)
{
    QList<QByteArray> names;
    for (const QString &folder : folders) {
        names.append(QFile::encodeName(folder));
        plan.folders.at(static_cast<std::size_t>(names.size() - 1)) = names.constLast().constData();
    }
    *shared() = {};
    const pid_t child = ::fork();
    if (child == 0) {
        work(plan, job);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) {
        qFatal("no child");
    }
    Ending ending;
    ending.isDisturbed = shared()->tally.hits > 0;
    ending.call = shared()->tally.hit.data();
    ending.warnings = shared()->warnings;
    ending.notes = QString::fromUtf8(shared()->notes.data()).split(u'\n', Qt::SkipEmptyParts);
    const bool mayBeKilled
        = plan.act == faults::Act::KillBefore || plan.act == faults::Act::KillWithin;
    if (WIFEXITED(status)) {
        ending.result = WEXITSTATUS(status);
    } else if (WTERMSIG(status) == SIGKILL && mayBeKilled && ending.isDisturbed) {
        ending.isKilled = true;
    } else {
        ending.crash = "ended by signal " + QByteArray::number(WTERMSIG(status));
    }
    return ending;
}

} // namespace lumi::test
