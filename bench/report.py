#!/usr/bin/env python3
"""Writes the tables of README.md and the picture results.svg from what scripts/bench measured.

usage: report.py TIMINGS.json INSTRUCTIONS.txt DESCRIPTION
"""
import json
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).parent
FASTER = {"a": 10, "b": 14, "c": 14, "d": 9, "e": 8, "f": 8, "g": 12, "h": 18}
LIMITS = (line.split() for line in (HERE / "limits.txt").read_text().splitlines())
INSTRUCTIONS = {name: int(most) for name, most in LIMITS}
CALLS = {
    "a": "bare OK (`atStart`)",
    "b": "IMSI (`KR_getIMSI`)",
    "c": "one +CREG line, mode 2 (`cregRead`)",
    "d": "+CME ERROR (`cgsnExec`)",
    "e": "sixteen PDP contexts (`cgdcontRead`)",
    "f": "twenty operators (`copsTest`)",
    "g": "10,000 characters of lines (`cgsnExec`)",
    "h": "+CEREG report (`ProcessMainControlAtCallback`)",
}


def fastest(path):
    """The least time of all repetitions in ns, and the bytes of the reply, by benchmark."""
    times, sizes = {}, {}
    for run in json.loads(path.read_text())["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        name = run["run_name"]
        times[name] = min(times.get(name, float("inf")), run["cpu_time"])
        sizes[name] = run.get("bytes", 0)
    return times, sizes


def verdict(reached):
    return "" if reached else " (missed)"


def calls_table(times, sizes, counts):
    lines = [
        "| call | library ns | port ns | times faster | at least | instructions | at most | ns a byte | of the floor |",
        "|---|---:|---:|---:|---:|---:|---:|---:|---:|",
    ]
    for name, call in CALLS.items():
        library, port, floor = (times[f"{name}/{side}"] for side in ("library", "port", "floor"))
        faster, count = port / library, counts[name]
        lines.append(
            f"| {name}: {call} | {library:,.0f} | {port:,.0f} | {faster:.1f}{verdict(faster >= FASTER[name])} | "
            f"{FASTER[name]} | {count:,}{verdict(count <= INSTRUCTIONS[name])} | {INSTRUCTIONS[name]:,} | "
            f"{library / sizes[f'{name}/library']:.2f} | {library / floor:.2f} |"
        )
    return lines


def line_series(times, sizes):
    """Characters of a line and ns a byte, shortest lines first, by kind of line."""
    kinds = {}
    for name in times:
        kind, _, length = name.partition("/")
        if length.isdigit():
            kinds.setdefault(kind, []).append((int(length), times[name] / sizes[name]))
    return {kind: sorted(series) for kind, series in kinds.items()}


def lines_table(kinds):
    lengths = [length for length, _ in kinds["named"]]
    lines = ["| characters a line | " + " | ".join(map(str, lengths)) + " |", "|---|" + "---:|" * len(lengths)]
    for kind, series in kinds.items():
        costs = " | ".join(f"{cost:.2f}{verdict(cost <= 0.4)}" for _, cost in series)
        lines.append(f"| {kind}, ns a byte | {costs} |")
    return lines


def parser_table(times):
    clearing = times["clearing"]
    lines = ["| `Bk_Parse_At_Res` | ns | clearings of 102,400 bytes | at most |", "|---|---:|---:|---:|"]
    for name in ("b", "c"):
        cost = times[f"{name}/parser"]
        lines.append(f"| {name} | {cost:,.0f} | {cost / clearing:.2f}{verdict(cost <= 1.25 * clearing)} | 1.25 |")
    return lines


def picture(times, series):
    """Bars of how many times faster, with a mark where each has to be, and the curve of the long reply."""
    faster = {name: times[f"{name}/port"] / times[f"{name}/library"] for name in CALLS}
    scale = 420 / max(faster.values())
    parts = []
    for row, (name, value) in enumerate(faster.items()):
        top = 40 + 26 * row
        label = re.sub(r" \(.*", "", CALLS[name])
        parts.append(f'<text x="10" y="{top + 13}">{name}: {label}</text>')
        parts.append(f'<rect x="230" y="{top}" width="{value * scale:.1f}" height="17" fill="#4a7ebb"/>')
        mark = 230 + FASTER[name] * scale
        parts.append(f'<line x1="{mark:.1f}" y1="{top - 3}" x2="{mark:.1f}" y2="{top + 20}" stroke="#c0392b"/>')
        parts.append(f'<text x="{236 + max(value, FASTER[name]) * scale:.1f}" y="{top + 13}">{value:.0f}</text>')
    top, high = 300, 120
    most = max(0.4, *(cost for _, cost in series)) * 1.1

    def y(cost):
        return top + high - cost / most * high

    step = 420 / max(1, len(series) - 1)
    points = " ".join(f"{230 + i * step:.1f},{y(cost):.1f}" for i, (_, cost) in enumerate(series))
    parts.append(f'<text x="10" y="{top + 13}">ns a byte of the long reply,</text>')
    parts.append(f'<text x="10" y="{top + 30}">by characters a named line</text>')
    parts.append(f'<line x1="230" y1="{y(0.4):.1f}" x2="650" y2="{y(0.4):.1f}" stroke="#c0392b"/>')
    parts.append(f'<polyline points="{points}" fill="none" stroke="#4a7ebb" stroke-width="2"/>')
    for i, (length, cost) in enumerate(series):
        parts.append(f'<text x="{222 + i * step:.1f}" y="{y(cost) - 6:.1f}">{cost:.2f}</text>')
        parts.append(f'<text x="{222 + i * step:.1f}" y="{top + high + 18}">{length}</text>')
    title = '<text x="10" y="20" font-weight="bold">Times faster than the plain port; red: what is required</text>'
    style = 'xmlns="http://www.w3.org/2000/svg" font-family="sans-serif" font-size="12"'
    body = "\n".join([title, *parts])
    return f'<svg {style} viewBox="0 0 720 450">\n<rect width="720" height="450" fill="white"/>\n{body}\n</svg>\n'


def main():
    times, sizes = fastest(pathlib.Path(sys.argv[1]))
    counts = {}
    for line in pathlib.Path(sys.argv[2]).read_text().splitlines():
        name, count = line.split()[:2]
        counts[name] = int(count)
    kinds = line_series(times, sizes)
    tables = [[sys.argv[3]], calls_table(times, sizes, counts), lines_table(kinds), parser_table(times)]
    text = "\n\n".join("\n".join(table) for table in tables)
    readme = HERE / "README.md"
    head, rest = readme.read_text().split("<!-- results -->\n")
    _, tail = rest.split("<!-- end of results -->\n")
    readme.write_text(f"{head}<!-- results -->\n\n{text}\n\n<!-- end of results -->\n{tail}")
    (HERE / "results.svg").write_text(picture(times, kinds["named"]))


if __name__ == "__main__":
    main()
