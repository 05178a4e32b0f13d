// SPDX-License-Identifier: MIT
#include "tools/inspect/rasterCommand.h"

#include "items/FPVItemJpeg.h"
#include "tools/inspect/sizeText.h"

#include <QSize>
#include <QTextStream>

#include <cstdio>
#include <optional>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

struct Job
{
    QString file;
    int depth = 0;
    std::optional<QSize> request;
};

bool takeDepth(const QString &text, Job *job)
{
    job->depth = text.toInt();
    return job->depth == 16 || job->depth == 32;
}

bool takeRequest(const QString &text, Job *job)
{
    job->request = sizeFromText(text);
    return job->request.has_value();
}

std::optional<Job> parse(const QStringList &arguments)
{
    Job job;
    bool ok = true;
    for (auto it = arguments.begin(); ok && it != arguments.end(); ++it) {
        const bool isLast = std::next(it) == arguments.end();
        if (*it == QLatin1String("--depth")) {
            ok = !isLast && takeDepth(*++it, &job);
        } else if (*it == QLatin1String("--request")) {
            ok = !isLast && takeRequest(*++it, &job);
        } else {
            ok = job.file.isEmpty();
            job.file = *it;
        }
    }
    return ok && job.depth != 0 && !job.file.isEmpty() ? std::optional(job) : std::nullopt;
}

} // namespace

int rasterCommand(const QStringList &arguments, QTextStream &err)
{
    std::optional<Job> job = parse(arguments);
    if (!job) {
        return kWrongUsage;
    }
    FPVItemJpeg item(job->file, QString(), false);
    item.setIncremental(false);
    QSize size;
    if (!item.startDecode(job->depth, &size, job->request ? &*job->request : nullptr)) {
        err << job->file << ": cannot be decoded, error code " << static_cast<int>(item.errorCode())
            << '\n';
        return kFailed;
    }
    const auto bytes = static_cast<std::size_t>(job->depth / 8)
        * static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
    if (std::fwrite(item.rasterBits(), 1, bytes, stdout) != bytes || std::fflush(stdout) != 0) {
        err << "lumivault-inspect: the output could not be written\n";
        return kFailed;
    }
    err << textOfSize(size) << '\n';
    return 0;
}
