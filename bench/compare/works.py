"""What is compared: each work with the programs that do it, the bare one first."""

import glob
import os
import shutil
import subprocess
import time

from screen import Program, Screen

ROUNDS = 3
MISSING = None


def median(times):
    return sorted(times)[len(times) // 2] if times else MISSING


class Place:
    """Where the pictures, the results and the programs are."""

    def __init__(self, build, work):
        self.build, self.work = build, work
        self.tarn, self.view = f"{build}/tarn", f"{build}/tarn-view"
        self.bare = f"{build}/bare"

    def pictures(self, name, count, width, height):
        folder = f"{self.work}/{name}"
        if not os.path.isdir(folder):
            subprocess.run([self.bare, "pictures", folder, str(count), str(width), str(height)],
                           check=True)
        return folder

    def fresh(self):
        """An empty folder for results."""
        self.sweep()
        os.makedirs(f"{self.work}/out")
        return f"{self.work}/out"

    def sweep(self):
        shutil.rmtree(f"{self.work}/out", ignore_errors=True)


def files_of(folder):
    return sorted(glob.glob(folder + "/*.jpg"))


def run_in_turns(place, programs, rounds=ROUNDS):
    """{name: milliseconds} of whole processes, each in its turn; `programs`: {name: out -> words}."""
    times = {name: [] for name in programs}
    for _ in range(rounds):
        for name, words in programs.items():
            out = place.fresh()
            start = time.monotonic()
            done = subprocess.run(words(out), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                  check=False, cwd=out)
            if done.returncode == 0:
                times[name].append((time.monotonic() - start) * 1000)
    place.sweep()
    return {name: median(of) for name, of in times.items()}


def thumbnails(place):
    folder = place.pictures("large", 120, 6000, 4000)
    files = files_of(folder)

    def ours(out):
        for path in files:
            os.link(path, out + "/" + os.path.basename(path))
        return [place.tarn, "thumbnails", "--size", "120", out]

    return "Thumbnails of 120 pictures of 24 megapixels", run_in_turns(place, {
        "bare program": lambda out: [place.bare, "thumbnails", out, *files],
        "Tarn View": ours,
        "vipsthumbnail": lambda out: ["vipsthumbnail", "-s", "120x120", "-o", out + "/%s.jpg[Q=85]",
                                      *files],
        "ImageMagick": lambda out: ["mogrify", "-define", "jpeg:size=240x240", "-thumbnail",
                                    "120x120", "-path", out, *files]})


def screen_size(place):
    picture = files_of(place.pictures("large", 120, 6000, 4000))[0]
    return "One picture of 24 megapixels to screen size, as JPEG", run_in_turns(place, {
        "bare program": lambda out: [place.bare, "screen", out + "/a.jpg", "1920", "1080", picture],
        "Tarn View": lambda out: [place.tarn, "convert", "--max-height", "1080", "--quality", "85",
                                  "--to", out, picture],
        "vipsthumbnail": lambda out: ["vipsthumbnail", "-s", "1920x1080", "-o", out + "/%s.jpg[Q=85]",
                                      picture],
        "ImageMagick": lambda out: ["convert", "-define", "jpeg:size=1920x1080", picture, "-resize",
                                    "1920x1080", "-quality", "85", out + "/a.jpg"]}, 9)


def dates(place):
    files = files_of(place.pictures("small", 2600, 800, 533))
    return "Dates of 2,600 pictures", run_in_turns(place, {
        "bare program": lambda out: [place.bare, "heads", *files],
        "Tarn View": lambda out: [place.tarn, "info", "--date", *files],
        "exiv2": lambda out: ["exiv2", "-q", "-K", "Exif.Photo.DateTimeOriginal", "-Pv", "pr", *files],
        "exiftool": lambda out: ["exiftool", "-q", "-q", "-fast2", "-s3", "-DateTimeOriginal",
                                 *files]}, 5)


def file_dates(place):
    folder = place.pictures("small", 2600, 800, 533)
    files = files_of(folder)
    return "File dates of 2,600 pictures set from their camera data", run_in_turns(place, {
        "bare program": lambda out: [place.bare, "times", *files],
        "Tarn View": lambda out: [place.tarn, "dates", folder],
        "jhead": lambda out: ["jhead", "-q", "-ft", *files],
        "exiftool": lambda out: ["exiftool", "-q", "-q", "-FileModifyDate<DateTimeOriginal",
                                 *files]}, 5)


def panel(place):
    files = files_of(place.pictures("small", 2600, 800, 533))
    return "Panel data of 2,600 pictures", run_in_turns(place, {
        "bare program": lambda out: [place.bare, "heads", *files],
        "Tarn View": lambda out: [place.tarn, "info", *files],
        "exiv2": lambda out: ["exiv2", "-q", "pr", *files],
        "jhead": lambda out: ["jhead", *files],
        "exiftool": lambda out: ["exiftool", "-q", "-q", "-fast2", *files]}, 5)


def gallery(place, count, peers):
    folder = place.pictures(f"gallery{count}", count, 2000, 1333)
    files = files_of(folder)

    def linked(out):
        for path in files:
            os.link(path, out + "/" + os.path.basename(path))
        return out

    every = {
        "bare program": lambda out: [place.bare, "gallery", out, *files],
        "Tarn View": lambda out: [place.tarn, "gallery", "--thumbnails",
                                  linked(out) + "/index.html", out],
        "llgal": lambda out: ["llgal", "-d", linked(out)],
        "fgallery": lambda out: ["fgallery", "-j", "2", folder, out + "/site"]}
    return f"Gallery of {count:,} pictures, thumbnails included", run_in_turns(
        place, {name: every[name] for name in ("bare program", "Tarn View", *peers)}, 1)


def viewers(place, kind="show"):
    """{name: file -> words, key to the next picture}."""
    return {"bare program": (lambda file: [place.bare, kind, file], "n"),
            "Tarn View": (lambda file: [place.view, file], "n"),
            "geeqie": (lambda file: ["geeqie", file], "Page_Down"),
            "gthumb": (lambda file: ["dbus-run-session", "gthumb", file], "Page_Down"),
            "gwenview": (lambda file: ["dbus-run-session", "gwenview", file], "Right")}


def homes(place, name):
    home = f"{place.work}/home/{name.replace(' ', '-')}"
    os.makedirs(home, exist_ok=True)
    return home


def opening(place, count):
    first = files_of(place.pictures(f"folder{count}", count, 2000, 1333))[0]
    screen = Screen(1600)
    times = {name: [] for name in viewers(place)}
    for _ in range(ROUNDS):
        for name, (words, _key) in viewers(place).items():
            if times[name] == [None]:
                continue  # it will not come the next time either
            program = Program(words(first), homes(place, name))
            times[name].append(screen.wait_for(0, 60))
            program.end()
            time.sleep(0.5)
    return (f"A folder of {count:,} pictures, from the start of the program to the first picture",
            {name: median([t for t in of if t]) for name, of in times.items()})


def steps(place):
    """Steps with a rest between them, steps at once, and the memory behind 500 of them."""
    files = files_of(place.pictures("large", 120, 6000, 4000))
    screen = Screen(1600)
    rested, at_once, memory = {}, {}, {}
    for name, (words, key) in viewers(place).items():
        program = Program(words(files[0]), homes(place, name))
        screen.wait_for(0, 60)
        time.sleep(3)
        at = 0
        times = {"rested": [], "at once": []}
        for kind, count in (("rested", 20), ("at once", 480)):
            for _ in range(count):
                time.sleep(1.0 if kind == "rested" else 0.0)
                at += 1
                screen.key(key)
                times[kind].append(screen.wait_for(at % 6, 5))
                if times[kind][-5:] == [None] * 5:
                    break
        rested[name] = median([t for t in times["rested"] if t])
        at_once[name] = median([t for t in times["at once"] if t])
        memory[name] = program.most_memory() if at_once[name] else MISSING
        program.end()
        time.sleep(0.5)
    return (("A step to the next picture of 24 megapixels after a second's rest", rested),
            ("A step at once, as soon as the picture before is seen", at_once),
            ("Memory at most, in megabytes, over 500 pictures of 24 megapixels", memory))


def four_up(place):
    """Four to a screen: a step shows one picture more."""
    files = files_of(place.pictures("large", 120, 6000, 4000))
    screen = Screen(1600)
    result = {}
    for name, words, begin in (("bare program", [place.bare, "show4", files[0]], None),
                               ("Tarn View", [place.view, files[0]], "4")):
        program = Program(words, homes(place, name))
        screen.wait_for(0, 60)
        time.sleep(3)
        if begin:
            screen.key(begin)
        screen.wait_for(3, 10)
        times = []
        for at in range(4, 44):
            time.sleep(0.3)
            screen.key("n")
            times.append(screen.wait_for(at % 6, 5))
        result[name] = median([t for t in times if t])
        program.end()
    return "A step with four pictures to a screen", result
