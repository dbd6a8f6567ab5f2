"""Prints the pairs of runs that `scripts/bench --against` has made: per row the percentiles of both revisions, and the
median of the ratios within the pairs, which is what a machine with changing load leaves intact."""

import json
import pathlib
import statistics
import sys


def rows(path):
    run = json.loads(path.read_text())
    return {row["name"]: row for row in run["rows"] if row["samples"]}, run["busy"]


def percentile(samples, share):
    return sorted(samples)[int(share * (len(samples) - 1) + 0.5)]


def main():
    revision, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    before = [rows(path) for path in sorted(folder.glob("before.*"))]
    after = [rows(path) for path in sorted(folder.glob("after.*"))]
    print(f"{'':52} {revision[:18]:>18} {'this tree':>18}")
    print(f"{'':52} {'p50':>9}{'p95':>9} {'p50':>9}{'p95':>9}   p50, ratio within the pairs")
    for name in after[0][0]:
        pairs = [(b[name]["samples"], a[name]["samples"]) for (b, _), (a, _) in zip(before, after) if name in b and name in a]
        if not pairs:
            continue
        figures = []
        for side in range(2):
            samples = [sample for pair in pairs for sample in pair[side]]
            figures += [percentile(samples, 0.5), percentile(samples, 0.95)]
        ratios = [statistics.median(a) / statistics.median(b) for b, a in pairs if statistics.median(b)]
        ratio = f"{statistics.median(ratios):.2f} ({min(ratios):.2f} to {max(ratios):.2f})" if ratios else "-"
        unit = after[0][0][name]["unit"]
        print(f"{name:52} {figures[0]:9.2f}{figures[1]:9.2f} {figures[2]:9.2f}{figures[3]:9.2f} {unit:4} {ratio}")
    busy = [load for runs in (before, after) for _, load in runs]
    print(f"\nprocessors busy while this ran: {min(busy):.0%} to {max(busy):.0%}")


main()
