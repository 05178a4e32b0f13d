#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads the table that bench/run prints from standard input. Writes it as a Markdown table between
the two marker comments of docs/performance.md, and as a plot into docs/performance.svg.

    bench/run | tee build/bench.txt; bench/report.py < build/bench.txt
"""
import datetime
import pathlib
import re
import sys
from xml.sax.saxutils import escape

BEGIN = "<!-- figures: written by bench/report.py -->"
END = "<!-- end of figures -->"
DOCS = pathlib.Path(__file__).resolve().parent.parent / "docs"

# As print() of bench/Measure.cpp writes a row.
NUMBER = r"(-?(?:[0-9.]+|inf|nan))"
ROW = re.compile(
    rf"(?P<job>\S.*?) +{NUMBER} (?P<unit>\S+) +{NUMBER} \S+ +(?P<sign>[x+]) *{NUMBER}"
    rf" +[x+] *{NUMBER} (?P<verdict>kept|EXCEEDED) +(?P<reference>\S.*)"
)

# The plot, in pixels.
WIDTH = 800
LINE = 22
TOP = 44
BAR_LEFT = 390
BAR_OF_BUDGET = 260  # the length of a bar that uses its whole budget
LONGEST_BAR = 360
KEPT, EXCEEDED = "#7A9A5B", "#C0392B"


def rows_of(lines):
    """The rows behind the heading of the table. Ends the program if one can't be read."""
    rows = []
    is_table = False
    for line in lines:
        line = line.rstrip()
        if line.startswith("job ") and line.endswith("compared with"):
            is_table = True
        elif is_table and line:
            match = ROW.fullmatch(line)
            if not match:
                sys.exit(f"bench/report.py: not a row of bench/run: {line}")
            rows.append(row_of(match))
    if not rows:
        sys.exit("bench/report.py: there is no table of bench/run on standard input")
    return rows


def row_of(match):
    ours, bare, value, limit = (float(match[i]) for i in (2, 4, 6, 7))
    return {
        "job": match["job"],
        "reference": match["reference"],
        "unit": match["unit"],
        "ours": ours,
        "bare": bare,
        "is_difference": match["sign"] == "+",
        "value": value,
        "limit": limit,
        "is_kept": match["verdict"] == "kept",
    }


def cell(row, value):
    """A value or limit: a factor, or a difference with its unit."""
    return f"{value:+.2f} {row['unit']}" if row["is_difference"] else f"{value:.2f} x"


def table(rows):
    lines = [
        "| Job | Compared with | Ours | Bare | Value | Budget | |",
        "|---|---|---:|---:|---:|---:|---|",
    ]
    for row in rows:
        verdict = "kept" if row["is_kept"] else "**exceeded**"
        unit = row["unit"]
        lines.append(
            f"| {row['job']} | {row['reference']} | {row['ours']:.2f} {unit} | {row['bare']:.2f} {unit}"
            f" | {cell(row, row['value'])} | {cell(row, row['limit'])} | {verdict} |"
        )
    return "\n".join(lines)


def bar(row, y):
    share = max(row["value"] / row["limit"], 0)
    length = min(share * BAR_OF_BUDGET, LONGEST_BAR)
    color = KEPT if row["is_kept"] else EXCEEDED
    middle = y + LINE / 2 + 4
    return (
        f'  <text x="{BAR_LEFT - 8}" y="{middle:g}" text-anchor="end">{escape(row["job"])}</text>\n'
        f'  <rect x="{BAR_LEFT}" y="{y + 4}" width="{length:.1f}" height="{LINE - 8}" fill="{color}"/>\n'
        f'  <text x="{WIDTH - 8}" y="{middle:g}" text-anchor="end">{share:.0%}</text>\n'
    )


def plot(rows):
    height = TOP + LINE * len(rows) + 12
    bars = "".join(bar(row, TOP + LINE * i) for i, row in enumerate(rows))
    limit = BAR_LEFT + BAR_OF_BUDGET
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" viewBox="0 0 {WIDTH} {height}" role="img">
  <!-- SPDX-License-Identifier: MIT -->
  <title>How much of its budget each job uses</title>
  <style>text {{ font-family: sans-serif; font-size: 12px; fill: #222222 }}</style>
  <rect width="{WIDTH}" height="{height}" fill="#FFFFFF"/>
  <text x="{limit}" y="22" text-anchor="middle">100% of the budget</text>
{bars}  <line x1="{limit}" x2="{limit}" y1="30" y2="{height - 8}" stroke="#222222" stroke-dasharray="4 3"/>
</svg>
"""


def replace_figures(rows):
    page = DOCS / "performance.md"
    text = page.read_text(encoding="utf-8")
    if text.count(BEGIN) != 1 or text.count(END) != 1:
        sys.exit(f"bench/report.py: {page.name} must have each marker comment once")
    before, rest = text.split(BEGIN)
    after = rest.split(END)[1]
    figures = (
        f"{BEGIN}\nMeasured on {datetime.date.today()}.\n\n"
        "![How much of its budget each job uses](performance.svg)\n\n"
        f"{table(rows)}\n{END}"
    )
    page.write_text(before + figures + after, encoding="utf-8")


def main():
    rows = rows_of(sys.stdin)
    replace_figures(rows)
    (DOCS / "performance.svg").write_text(plot(rows), encoding="utf-8")
    print(f"{len(rows)} rows, {sum(not row['is_kept'] for row in rows)} exceeded")


if __name__ == "__main__":
    main()
