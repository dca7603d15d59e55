"""Runs every work with all programs that do it and writes the document: compare.py BUILD WORK OUT.

With names behind that (of works as in WORKS, of benches) only these run, and their sections of the
document are written anew."""

import os
import platform
import re
import subprocess
import sys

import works

PACKAGES = {"vipsthumbnail": "libvips-tools", "ImageMagick": "imagemagick", "exiv2": "exiv2",
            "jhead": "jhead", "exiftool": "libimage-exiftool-perl", "geeqie": "geeqie",
            "gthumb": "gthumb", "gwenview": "gwenview", "llgal": "llgal", "fgallery": "fgallery"}

# The program's own benches, each beside a bare program in one process, with the goals they hold to.
BENCHES = ("bench_preview", "bench_step", "bench_show", "bench_zoom", "bench_moveview", "bench_window",
           "bench_notes", "bench_history", "bench_rename", "bench_journal",
           "bench_thumbs", "bench_grid", "bench_sheet", "bench_gallery", "bench_video", "bench_raw",
           "bench_fits")


def output(*words):
    return subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                          check=False).stdout.strip()


def version(package):
    return output("dpkg-query", "-W", "-f", "${Version}", package)


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as info:
        model = next((line.split(":")[1].strip() for line in info if line.startswith("model name")),
                     platform.machine())
    with open("/proc/meminfo", encoding="utf-8") as info:
        memory = int(info.readline().split()[1]) // (1024 * 1024)
    with open("/etc/os-release", encoding="utf-8") as info:
        system = next(line.split('"')[1] for line in info if line.startswith("PRETTY_NAME"))
    return (f"{model}, {os.cpu_count()} processors, {memory} GB of memory, {system}, "
            f"Linux {platform.release()}, display of 1600 x 1000 without a graphics card")


def table(title, values):
    bare = values.get("bare program")
    unit = "MB" if "megabytes" in title else "ms"
    lines = [f"### {title}", "", "| Program | Beside the bare program |", "|---|---:|"]
    for name, value in values.items():
        if value is None:
            lines.append(f"| {name} | could not be measured |")
        elif name == "bare program":
            lines.append(f"| {name} ({value:.0f} {unit}) | 1 |")
        else:
            lines.append(f"| {name} | {value / bare:.2f} |" if bare else f"| {name} | ? |")
    return "\n".join(lines) + "\n"


WORKS = {
    "thumbnails": lambda place: [works.thumbnails(place)],
    "screen": lambda place: [works.screen_size(place)],
    "dates": lambda place: [works.dates(place)],
    "file_dates": lambda place: [works.file_dates(place)],
    "panel": lambda place: [works.panel(place)],
    "gallery": lambda place: [works.gallery(place, 1000, ["llgal"]),
                              works.gallery(place, 60, ["fgallery"])],
    "opening": lambda place: [works.opening(place, 60), works.opening(place, 50000)],
    "steps": works.steps,
    "four_up": lambda place: [works.four_up(place)],
}


HEAD = """# Speed beside its peers

Written by `bench/compare.sh`; anyone can have these figures again with that one command. All
programs did the same work on the same pictures, in turns, on one machine, each section in one run. The bare program
(`bench/compare/bare.cpp`) is the limit: the least that does the work, with the libraries' own calls
and nothing else. Every other figure is how many times as long (or as much) a program took; less is
better. Programs with a window ran maximised on a virtual display, keys came as from a keyboard, and a
picture counted as shown when it stood on the screen.
"""


def measured(place, name):
    """The sections of one work or bench, each with the line that it begins with."""
    if name in WORKS:
        for title, values in WORKS[name](place):
            print(title, {of: value and round(value, 1) for of, value in values.items()}, flush=True)
            yield f"### {title}\n", table(title, values)
    else:
        print(name, flush=True)
        yield f"`{name}`\n", f"`{name}`\n\n```\n{output(f'{place.build}/{name}')}\n```\n"


def whole(place):
    parts = [HEAD, machine() + ".\n",
             ", ".join(f"{name} {version(package)}" for name, package in PACKAGES.items()) + ".\n",
             "## Beside other programs\n"]
    for name in WORKS:
        parts += [section for _, section in measured(place, name)]
    parts.append("## The program's own limits\n\nWhat the benches of this program print, each figure "
                 "beside a bare one in the same process.\n")
    for name in BENCHES:
        parts += [section for _, section in measured(place, name)]
    return "\n".join(parts)


def renewed(place, text, names):
    for name in names:
        for begin, section in measured(place, name):
            pattern = re.escape(begin) + r".*?(?=\n### |\n## |\n`bench_|\Z)"
            text = re.sub(pattern, lambda _, by=section: by, text, count=1, flags=re.S)
    return text


def main(build, work, out, *names):
    place = works.Place(build, work)
    if names:
        with open(out, encoding="utf-8") as document:
            text = renewed(place, document.read(), names)
    else:
        text = whole(place)
    with open(out, "w", encoding="utf-8") as document:
        document.write(text)


if __name__ == "__main__":
    main(*sys.argv[1:])
