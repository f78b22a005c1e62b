#!/usr/bin/python3
"""What ./bench.sh --data measured, as pages and charts.

measurements.py page <folder>   writes measurements.md and the charts of docs/performance.md there
measurements.py readme          brings the figures of README.md's table up to date

A file docs/measurements/<make>.tsv holds one machine's figures: lines "# key<TAB>value", then a line for each row and
size: name, size, and contender=MPix/s for each file of the library, each peer and a copy of as many bytes."""
import collections
import math
import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
FILES = ("SSE4.2", "AVX2", "AVX-512")  # of the library, the widest last
SIZES = ("64x64", "1280x720", "3840x2160")  # of every row; others are those of the charts over sizes

Machine = collections.namedtuple("Machine", "name about rows")  # rows[function, size] = {contender: speed}


def machines():
    found = []
    for path in sorted((TOP / "docs/measurements").glob("*.tsv")):
        about, rows = {}, {}
        for line in path.read_text().splitlines():
            fields = line.split("\t")
            if line.startswith("# "):
                about[fields[0][2:]] = fields[1]
            else:
                rows[fields[0], fields[1]] = {key: float(value) for key, value in (f.rsplit("=", 1) for f in fields[2:])}
        found.append(Machine(about["processor"], about, rows))
    return found


def best_peer(speeds):
    return max(((speed, name) for name, speed in speeds.items() if name not in FILES + ("copy",)), default=None)


def widest(speeds):
    return [name for name in FILES if name in speeds][-1]


def ratio(speeds, contender=None):
    """Our speed over that of the fastest peer, of the widest file if none is named."""
    peer = best_peer(speeds)
    ours = speeds.get(contender or widest(speeds))
    return ours / peer[0] if peer and ours else None


def geometric_mean(values):
    values = list(values)
    return math.exp(sum(map(math.log, values)) / len(values)) if values else math.nan


def families():
    """The header that declares each function."""
    return {name: path.stem for path in sorted((TOP / "include/moxcc").glob("*.h"))
            for name in re.findall(r"\b(mox\w+)\(", path.read_text())}


def number(value, form="{:.0f}"):
    return form.format(value) if value else ""


def table(header, rows):
    yield "| " + " | ".join(header) + " |"
    yield "|" + "|".join("---" if i == 0 else "--:" for i in range(len(header))) + "|"
    for row in rows:
        yield "| " + " | ".join(row) + " |"


def page(all_machines):
    yield "# Measurements {#measurements}\n"
    yield "Millions of pixels a second, the best of each run of `./bench.sh --data`; @ref performance says how to read it.\n"
    for m in all_machines:
        about = ", ".join(f"{key} {value}" for key, value in m.about.items() if key != "processor")
        yield f"- **{m.name}**, one core: {about}"
    for m in all_machines:
        yield f"\n## {m.name}\n"
        own = [f for f in FILES if any(f in speeds for speeds in m.rows.values())]
        rows = []
        for (name, size), speeds in m.rows.items():
            if size not in SIZES:
                continue
            peer = best_peer(speeds)
            rows.append([name, size] + [number(speeds.get(f)) for f in own] +
                        [f"{peer[1]} {peer[0]:.0f}" if peer else ""] +
                        [number(ratio(speeds, f), "{:.2f}") for f in own] +
                        [number(100 * speeds[widest(speeds)] / speeds["copy"], "{:.0f} %") if "copy" in speeds else ""])
        yield from table(["Function", "size"] + own + ["fastest peer"] + [f"{f} / peer" for f in own] +
                         [f"{own[-1]} / copy"], rows)
        compared = {key: ratio(speeds) for key, speeds in m.rows.items() if key[1] in SIZES and ratio(speeds)}
        slower = sorted((value, key) for key, value in compared.items() if value < 1)
        yield (f"\n{len(compared)} figures with a peer: the {own[-1]} file is {geometric_mean(compared.values()):.2f} times "
               f"the fastest peer in the geometric mean, slower in {len(slower)}:\n")
        yield from table(["Function", "size", f"{own[-1]} / peer"],
                         ([name, size, f"{value:.2f}"] for value, (name, size) in slower))


def charts(all_machines, folder):
    import matplotlib
    matplotlib.use("svg")
    from matplotlib import pyplot

    family_of = families()
    names = sorted({family_of[name.split()[0]] for m in all_machines for (name, _), s in m.rows.items() if ratio(s)})
    figure, axes = pyplot.subplots(figsize=(9, 0.42 * len(names) * max(1, len(all_machines) / 2) + 1.2))
    for i, m in enumerate(all_machines):
        means = [geometric_mean(ratio(s) for (name, size), s in m.rows.items()
                                if family_of[name.split()[0]] == family and size == "1280x720" and ratio(s)) for family in names]
        height = 0.8 / len(all_machines)
        bars = axes.barh([y + i * height for y in range(len(names))], means, height, label=m.name)
        axes.bar_label(bars, [number(v, "{:.2f}") if v == v else "" for v in means], padding=2, fontsize=7)
    axes.axvline(1, color="black", linewidth=0.8)
    axes.set_yticks([y + 0.4 - 0.4 / len(all_machines) for y in range(len(names))], names)
    axes.invert_yaxis()
    axes.set_xlabel("speed of the widest file over the fastest peer, 1280x720, geometric mean of the family's rows")
    axes.legend()
    figure.tight_layout()
    figure.savefig(folder / "speed-by-family.svg")

    for m in all_machines:
        by_name = collections.defaultdict(dict)
        for (name, size), speeds in m.rows.items():
            by_name[name][math.prod(map(int, size.split("x")))] = speeds
        swept = {name: sizes for name, sizes in by_name.items() if len(sizes) > 2 * len(SIZES)}
        if not swept:
            continue
        figure, grid = pyplot.subplots(-(-len(swept) // 2), 2, figsize=(9, 2.8 * -(-len(swept) // 2)), squeeze=False)
        for axes, (name, sizes) in zip(grid.flat, swept.items()):
            for contender in dict.fromkeys(c for speeds in sizes.values() for c in speeds if c != "copy"):
                points = sorted((pixels, s[contender]) for pixels, s in sizes.items() if contender in s)
                axes.plot(*zip(*points), "-" if contender in FILES else "--", marker=".", label=contender)
            axes.set_xscale("log", base=2)
            axes.set_title(name, fontsize=8)
            axes.set_ylim(bottom=0)
            axes.tick_params(labelsize=7)
            axes.legend(fontsize=6)
        figure.supxlabel("pixels of the picture", fontsize=8)
        figure.supylabel("MPix/s", fontsize=8)
        figure.suptitle(m.name, fontsize=9)
        figure.tight_layout()
        figure.savefig(folder / f"speed-by-size-{re.sub(r'[^a-z0-9]+', '-', m.name.lower())}.svg")


def readme(all_machines):
    """README's rows are its own choice; the figures follow them."""
    lines = []
    for line in (TOP / "README.md").read_text().splitlines():
        row = re.match(r"\| (.*`(moxi\w+)`) \|", line)
        if row and row[2] in {name for m in all_machines for name, _ in m.rows}:
            cells = []
            for m in all_machines:
                speeds = m.rows[row[2], "1280x720"]
                peer = best_peer(speeds)
                cells += [number(speeds[widest(speeds)]), f"{peer[1]} {peer[0]:.0f}", number(ratio(speeds), "{:.2f}")]
            line = f"| {row[1]} | " + " | ".join(cells) + " |"
        elif line.startswith("| All rows"):
            means = [geometric_mean(ratio(s) for (_, size), s in m.rows.items() if size in SIZES and ratio(s))
                     for m in all_machines]
            line = f"| {line.split(' | ')[0][2:]} | " + " | ".join(f" | | {mean:.2f}" for mean in means) + " |"
        lines.append(line)
    (TOP / "README.md").write_text("\n".join(lines) + "\n")


def main():
    if sys.argv[1:] == ["readme"]:
        readme(machines())
    elif sys.argv[1:2] == ["page"] and len(sys.argv) == 3:
        folder = pathlib.Path(sys.argv[2])
        (folder / "measurements.md").write_text("\n".join(page(machines())) + "\n")
        charts(machines(), folder)
    else:
        sys.exit(__doc__)


main()
