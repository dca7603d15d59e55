#!/usr/bin/env python3
"""run.py BUILD FOLDER: each file of the folder through each reader, with time and peak memory."""
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE = 10  # seconds that a reader is given
MOST_SECONDS = 0.5

BUILD, FOLDER = sys.argv[1:3]
OUT = os.path.join(tempfile.mkdtemp(), "out")
os.environ["XDG_RUNTIME_DIR"] = os.path.dirname(OUT)  # or the toolkit complains first
MAGICK = shutil.which("convert-im6.q16") or shutil.which("convert")
READERS = [
    ("info", [BUILD + "/tarn", "info"], []),
    ("small", [BUILD + "/bench_limits", "--small"], []),
    ("whole", [BUILD + "/bench_limits", "--whole"], []),
    ("magick", [MAGICK, "-thumbnail", "256x256"], [OUT + ".png"]),
    ("pixbuf", ["gdk-pixbuf-thumbnailer", "-s", "256"], [OUT + ".png"]),
]


def run(command):
    """Seconds, those of the processor, megabytes, the first line told, how it ended."""
    begin = time.monotonic()
    with open(OUT + ".txt", "wb") as told:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=told, stderr=told)
        while True:
            pid, status, usage = os.wait4(process.pid, os.WNOHANG)
            if pid:
                break
            if time.monotonic() - begin > PATIENCE:
                os.kill(process.pid, signal.SIGKILL)
                _, status, usage = os.wait4(process.pid, 0)
                break
            time.sleep(0.002)
        process.returncode = status
    with open(OUT + ".txt", "rb") as told:
        lines = told.read(4000).decode("utf-8", "replace").split("\n")
    ended = "killed" if os.WIFSIGNALED(status) else ""
    busy = usage.ru_utime + usage.ru_stime
    return time.monotonic() - begin, busy, usage.ru_maxrss / 1024, lines[0], ended


def main():
    readers = [each for each in READERS if shutil.which(each[1][0])]
    for name, command, _ in readers:
        run(command[:1])  # its libraries are read by now
    print("%-30s" % "file" + "".join("%16s" % name for name, _, _ in readers) + "   said when small")
    over = []
    for file in sorted(os.listdir(FOLDER)):
        path = os.path.join(FOLDER, file)
        line, said = "%-30s" % file, ""
        for name, command, behind in readers:
            seconds, busy, megabytes, told, ended = run(command + [path] + behind)
            line += "%7.2f s %4d MB" % (seconds, megabytes)
            if name == "small":
                said = told
            own = command[0].startswith(BUILD)
            if own and (seconds > MOST_SECONDS or ended):
                over.append("%-8s %-30s %6.2f s, busy %5.2f s %5d MB %s" %
                            (name, file, seconds, busy, megabytes, ended))
        print(line + "   " + said, flush=True)
    print("\nover %.1f s, or ended by the system:" % MOST_SECONDS)
    print("\n".join(over) or "none")


main()
