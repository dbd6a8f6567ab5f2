#pragma once

#include <QString>

#include <chrono>
#include <deque>
#include <optional>
#include <vector>

namespace talmo::benchmarks {

using Time = std::chrono::steady_clock::time_point;

/// One row of the table: what was measured, again and again.
struct Figure {
    QString name;
    QString unit;
    /// The row that this one is a multiple of; empty for none.
    QString comparedWith;
    std::vector<double> samples;

    void add(double value) { samples.push_back(value); }
    /// In milliseconds.
    void add(Time from, Time to);
    double percentile(double share) const;
};

/// All rows of a run, and how busy the machine was meanwhile.
class Figures {
public:
    Figures();

    /// The row of this name, made at first use. The reference stays valid.
    Figure &row(const QString &name, const QString &unit = QStringLiteral("ms"), const QString &comparedWith = {});

    void print() const;
    void printJson() const;

private:
    struct Busy {
        double busy = 0;
        double all = 0;
    };
    static Busy busySoFar();
    double load() const;
    const Figure *find(const QString &name) const;
    std::optional<double> multiple(const Figure &figure) const;

    Busy m_before;
    std::deque<Figure> m_rows;
};

} // namespace talmo::benchmarks
