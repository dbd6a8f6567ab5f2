#include "Figures.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <thread>

namespace talmo::benchmarks {

namespace {

constexpr double median = 0.5;
constexpr double nineOfTen = 0.9;
constexpr double most = 0.95;
constexpr double nearlyAll = 0.99;

QByteArray firstLine(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readLine().trimmed() : QByteArray();
}

} // namespace

void Figure::add(Time from, Time to)
{
    samples.push_back(std::chrono::duration<double, std::milli>(to - from).count());
}

double Figure::percentile(double share) const
{
    auto sorted = samples;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1) + 0.5));
}

Figures::Figures()
    : m_before(busySoFar())
{
}

/// Of all processors, since the machine was started: user, nice, system, idle, iowait and what follows.
Figures::Busy Figures::busySoFar()
{
    const auto words = firstLine(QStringLiteral("/proc/stat")).simplified().split(' ');
    Busy time;
    for (qsizetype index = 1; index < words.size(); ++index) {
        const bool isIdle = index == 4 || index == 5;
        time.all += words[index].toDouble();
        time.busy += isIdle ? 0 : words[index].toDouble();
    }
    return time;
}

/// The share of all processors that was used while this ran, by the benchmark and by everybody else.
double Figures::load() const
{
    const Busy now = busySoFar();
    return now.all > m_before.all ? (now.busy - m_before.busy) / (now.all - m_before.all) : 0;
}

Figure &Figures::row(const QString &name, const QString &unit, const QString &comparedWith)
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const auto &each) { return each.name == name; });
    return found != m_rows.end() ? *found : m_rows.emplace_back(Figure{name, unit, comparedWith, {}});
}

const Figure *Figures::find(const QString &name) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const auto &each) { return each.name == name; });
    return found != m_rows.end() && !found->samples.empty() ? &*found : nullptr;
}

std::optional<double> Figures::multiple(const Figure &figure) const
{
    const auto *unit = figure.comparedWith.isEmpty() ? nullptr : find(figure.comparedWith);
    return unit != nullptr && unit->percentile(median) != 0
               ? std::optional(figure.percentile(median) / unit->percentile(median))
               : std::nullopt;
}

void Figures::print() const
{
    std::printf("%-52s %5s %9s %9s %9s %9s %-5s  %s\n", "", "n", "p50", "p90", "p95", "p99", "",
                "p50 as a multiple of");
    for (const auto &figure : m_rows) {
        if (figure.samples.empty()) {
            continue;
        }
        std::printf("%-52s %5zu %9.2f %9.2f %9.2f %9.2f %-5s", qUtf8Printable(figure.name), figure.samples.size(),
                    figure.percentile(median), figure.percentile(nineOfTen), figure.percentile(most),
                    figure.percentile(nearlyAll), qUtf8Printable(figure.unit));
        if (const auto times = multiple(figure)) {
            std::printf("  %.2f x %s", *times, qUtf8Printable(figure.comparedWith));
        }
        std::printf("\n");
    }
    std::printf("\n%u processors, %.0f %% of them busy while this ran; load average %s\n",
                std::thread::hardware_concurrency(), load() * 100,
                firstLine(QStringLiteral("/proc/loadavg")).split(' ').mid(0, 3).join(' ').constData());
}

void Figures::printJson() const
{
    QJsonArray rows;
    for (const auto &figure : m_rows) {
        QJsonArray samples;
        for (const double sample : figure.samples) {
            samples.append(sample);
        }
        rows.append(QJsonObject{{QStringLiteral("name"), figure.name},
                                {QStringLiteral("unit"), figure.unit},
                                {QStringLiteral("comparedWith"), figure.comparedWith},
                                {QStringLiteral("samples"), samples}});
    }
    const QJsonObject all{{QStringLiteral("rows"), rows},
                          {QStringLiteral("processors"), static_cast<int>(std::thread::hardware_concurrency())},
                          {QStringLiteral("busy"), load()}};
    std::printf("%s\n", QJsonDocument(all).toJson().constData());
}

} // namespace talmo::benchmarks
