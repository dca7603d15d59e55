"""Runs every work with all programs that do it and writes the document: compare.py BUILD WORK OUT."""

import os
import platform
import subprocess
import sys

import works

PACKAGES = {"vipsthumbnail": "libvips-tools", "ImageMagick": "imagemagick", "exiv2": "exiv2",
            "jhead": "jhead", "exiftool": "libimage-exiftool-perl", "geeqie": "geeqie",
            "gthumb": "gthumb", "gwenview": "gwenview", "llgal": "llgal", "fgallery": "fgallery"}

# The program's own benches, each beside a bare program in one process, with the goals they hold to.
BENCHES = ("bench_preview", "bench_step", "bench_show", "bench_moveview", "bench_window",
           "bench_notes", "bench_history", "bench_rename",
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


def every_work(place):
    yield works.thumbnails(place)
    yield works.screen_size(place)
    yield works.dates(place)
    yield works.file_dates(place)
    yield works.panel(place)
    yield works.gallery(place, 1000, ["llgal"])
    yield works.gallery(place, 60, ["fgallery"])
    yield works.opening(place, 60)
    yield works.opening(place, 50000)
    yield from works.steps(place)
    yield works.four_up(place)


HEAD = """# Speed beside its peers

Written by `bench/compare.sh`; anyone can have these figures again with that one command. All
programs did the same work on the same pictures, in turns, in one run on one machine. The bare program
(`bench/compare/bare.cpp`) is the limit: the least that does the work, with the libraries' own calls
and nothing else. Every other figure is how many times as long (or as much) a program took; less is
better. Programs with a window ran maximised on a virtual display, keys came as from a keyboard, and a
picture counted as shown when it stood on the screen.
"""


def main(build, work, out):
    place = works.Place(build, work)
    parts = [HEAD, machine() + ".\n",
             ", ".join(f"{name} {version(package)}" for name, package in PACKAGES.items()) + ".\n",
             "## Beside other programs\n"]
    for title, values in every_work(place):
        print(title, {name: value and round(value, 1) for name, value in values.items()}, flush=True)
        parts.append(table(title, values))
    parts.append("## The program's own limits\n\nWhat the benches of this program print, each figure "
                 "beside a bare one in the same process.\n")
    for bench in BENCHES:
        print(bench, flush=True)
        parts.append(f"`{bench}`\n\n```\n{output(f'{build}/{bench}')}\n```\n")
    with open(out, "w", encoding="utf-8") as document:
        document.write("\n".join(parts))


if __name__ == "__main__":
    main(*sys.argv[1:4])
