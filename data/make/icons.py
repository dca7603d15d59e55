"""Writes the button icons: one stroke, one grid, one colour that the program replaces."""

import sys

HEAD = (
    '<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24" fill="none" '
    'stroke="#000" stroke-width="1.75" stroke-linecap="round" stroke-linejoin="round">'
)


def line(d):
    return f'<path d="{d}"/>'


def solid(d):
    return f'<path d="{d}" fill="#000"/>'


def box(x, y, w, h, r=1.5, fill=""):
    return f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="{r}"{fill}/>'


def full_box(x, y, w, h, r=1.5):
    return box(x, y, w, h, r, ' fill="#000"')


def dot(x, y, r=1.2):
    return f'<circle cx="{x}" cy="{y}" r="{r}" fill="#000" stroke="none"/>'


def turned(body, how):
    """The drawing mirrored ("x"), upside down ("y") or lying on its side ("xy")."""
    matrix = {"x": "-1 0 0 1 24 0", "y": "1 0 0 -1 0 24", "xy": "0 1 1 0 0 0"}[how]
    return f'<g transform="matrix({matrix})">{body}</g>'


FOLDER = line("M3 18.5V6a1.5 1.5 0 0 1 1.5-1.5h4.3L11.2 7.3h8.3A1.5 1.5 0 0 1 21 8.8v9.7a1.5 1.5 0 0 1-1.5 1.5h-15A1.5 1.5 0 0 1 3 18.5z")
# A sheet whose lower right corner is left free for a sign.
SHEET = line("M10.5 21H6a1.5 1.5 0 0 1-1.5-1.5v-15A1.5 1.5 0 0 1 6 3h11a1.5 1.5 0 0 1 1.5 1.5V10M8.2 7.5h6.6M8.2 11.5h4")
# The label of a disk carries lines of writing: what is saved is a note.
DISK = line("M4.5 3.5h11.2L20.5 8.3v10.7a1.5 1.5 0 0 1-1.5 1.5H4.5A1.5 1.5 0 0 1 3 19V5a1.5 1.5 0 0 1 1.5-1.5zM7.5 3.5v4.2h6V3.5M7 20.5v-8h9.5v8M9.7 16.3h4.1")
SMALL_DISK = line("M3.3 5.5h8L15 9.2v9.1a1.2 1.2 0 0 1-1.2 1.2H3.3a1.2 1.2 0 0 1-1.2-1.2V6.7a1.2 1.2 0 0 1 1.2-1.2zM5.3 5.5v3.4h4.2V5.5M5.3 15.2h6.4")
CHEVRON = line("M9 4.5l7.5 7.5L9 19.5")
ARROW = line("M4 12h16M13.5 5.5L20 12l-6.5 6.5")
TURN = box(2.8, 11.5, 11.2, 9) + line("M8 4.5h3.8a7 7 0 0 1 7 7v4.3M15.6 12.8l3.2 3.2 3.2-3.2")
FLIP = line("M12 3v2.6M12 10.7v2.6M12 18.4V21M8.3 6.2v11.6H2.8z") + solid("M15.7 6.2v11.6h5.5z")
TWO = box(3, 4.5, 7.6, 15), box(13.4, 4.5, 7.6, 15)
COMPARE = full_box(3, 4.5, 7.6, 15) + TWO[1] + line("M16 9.3l2.6 2.7-2.6 2.7")
STEP = line("M6 5v14") + line("M10.5 5.2v13.6L20.5 12z")
LAST = line("M4 5.5l6.5 6.5L4 18.5M11.5 5.5L18 12l-6.5 6.5M20.8 5v14")

ICONS = {
    "previous": turned(CHEVRON, "x"),
    "next": CHEVRON,
    "back": turned(ARROW, "x"),
    "forward": ARROW,
    "rotate_right": TURN,
    "rotate_left": turned(TURN, "x"),
    "flip_horizontal": FLIP,
    "flip_vertical": turned(FLIP, "xy"),
    "slides_1": box(3, 4.5, 18, 15) + line("M3.5 16.5l5-5.2 3.6 3.6 2.8-2.6 5.6 5") + dot(15.8, 8.6, 1.3),
    "slides_2": "".join(TWO),
    "slides_2_vertical": turned("".join(TWO), "xy"),
    "slides_4": box(3.5, 3, 6.6, 8) + box(13.9, 3, 6.6, 8) + box(3.5, 13.6, 6.6, 8) + box(13.9, 13.6, 6.6, 8),
    "slides_4_landscape": box(2, 5.8, 8.8, 5) + box(13.2, 5.8, 8.8, 5) + box(2, 13.4, 8.8, 5) + box(13.2, 13.4, 8.8, 5),
    "slides_compare": COMPARE,
    "slides_compare_vertical": turned(COMPARE, "xy"),
    "one_to_one": '<circle cx="10.3" cy="10.3" r="6.8"/>' + line("M15.4 15.4l5.4 5.4"),
    "size_window": box(3, 4, 18, 16) + line("M3 8.2h18M8 16.8l7.8-5.4M12.2 11.2h3.8v3.4M7.8 13.6v3.4h3.8"),
    "copy": box(8.5, 8, 12, 12.8) + line("M15.5 4.8A1.5 1.5 0 0 0 14 3.3H5A1.5 1.5 0 0 0 3.5 4.8v10.1A1.5 1.5 0 0 0 5 16.4"),
    "copy_to": line("M9.3 11.8a1.4 1.4 0 0 1 1.4-1.4h2.4l1.8 2h5.2a1.4 1.4 0 0 1 1.4 1.4v5.8a1.4 1.4 0 0 1-1.4 1.4h-9.4a1.4 1.4 0 0 1-1.4-1.4zM6 15.8H4.5A1.5 1.5 0 0 1 3 14.3V4.5A1.5 1.5 0 0 1 4.5 3h8.6a1.5 1.5 0 0 1 1.5 1.5v3.2"),
    "move_to": line("M8 10.8V8.9A1.4 1.4 0 0 1 9.4 7.5h3l2 2.2h5.7a1.4 1.4 0 0 1 1.4 1.4v8.5a1.4 1.4 0 0 1-1.4 1.4H9.4A1.4 1.4 0 0 1 8 19.6v-.4M2.5 3v9.8a2.2 2.2 0 0 0 2.2 2.2h11.5M13 11.6l3.4 3.4-3.4 3.4"),
    "convert": box(3, 3, 8, 8) + full_box(13, 13, 8, 8, 4) + line("M14.5 5h1.2A2.3 2.3 0 0 1 18 7.3v2M15.6 7.4L18 9.8l2.4-2.4"),
    "close": line("M6 6l12 12M18 6L6 18"),
    "delete": line("M4 6.5h16M9 6.2V4.5A1.2 1.2 0 0 1 10.2 3.3h3.6A1.2 1.2 0 0 1 15 4.5v1.7M6 6.8l.9 12.5a1.5 1.5 0 0 0 1.5 1.4h7.2a1.5 1.5 0 0 0 1.5-1.4L18 6.8M10 10.8v6M14 10.8v6"),
    "folder_up": FOLDER + line("M12 17.2v-6.6M9 13.2l3-3 3 3"),
    "folder_back": FOLDER + line("M16 13.6H8.4M11.2 10.6l-3 3 3 3"),
    "folder_forward": FOLDER + line("M8 13.6h7.6M12.8 10.6l3 3-3 3"),
    "folder_dir": FOLDER + dot(7.6, 11.6) + dot(7.6, 15.7) + line("M10.8 11.6h6M10.8 15.7h6"),
    "refresh": line("M19.6 10A8 8 0 0 0 5.2 7.8L3.6 9.8M3.6 5v4.8h4.8M4.4 14a8 8 0 0 0 14.4 2.2l1.6-2M20.4 19v-4.8h-4.8"),
    "save_note": DISK,
    "save_note_next": SMALL_DISK + line("M18.2 8.6l3.9 3.9-3.9 3.9"),
    "save_note_prev": f'<g transform="translate(6.9 0)">{SMALL_DISK}</g>' + line("M5.8 8.6l-3.9 3.9 3.9 3.9"),
    "restore_note": SHEET + line("M13 16.2h5.3a2.4 2.4 0 0 1 0 4.8h-2.6M15.4 13.6l-2.6 2.6 2.6 2.6"),
    "clear_note": SHEET + line("M14.5 14.5l6 6M20.5 14.5l-6 6"),
    "brightness": '<circle cx="12" cy="12" r="4.2"/>' + solid("M12 7.8a4.2 4.2 0 0 1 0 8.4z") + line("M12 2.2v2M12 19.8v2M2.2 12h2M19.8 12h2M5.1 5.1l1.4 1.4M17.5 17.5l1.4 1.4M5.1 18.9l1.4-1.4M17.5 6.5l1.4-1.4"),
    "edit": line("M4 20l1-4.6L16 4.4a2 2 0 0 1 2.8 0l.8 .8a2 2 0 0 1 0 2.8L8.6 19zM13.6 6.8l3.6 3.6"),
    "open": line("M3 18V6a1.5 1.5 0 0 1 1.5-1.5h4L10.9 7H17a1.5 1.5 0 0 1 1.5 1.5v2M3.3 19l2.9-7.6a1.5 1.5 0 0 1 1.4-.9h13.2a1 1 0 0 1 .9 1.4l-2.6 7a1.5 1.5 0 0 1-1.4 1H4a.8.8 0 0 1-.7-.9z"),
    "play": line("M6.5 4.5v15L19.5 12z"),
    "stop": box(5, 5, 14, 14, 2),
    "step_forward": STEP,
    "step_back": turned(STEP, "x"),
    "first": turned(LAST, "x"),
    "last": LAST,
    "font_larger": line("M2.5 19.5L8.7 4.5l6.2 15M4.8 14h7.8M18.6 4.5v7M15.1 8h7"),
    "font_smaller": line("M4 19.5l4.7-11.5 4.7 11.5M5.8 15.2h5.8M15.4 8h6.6"),
    "filter": line("M3.5 4.5h17l-6.6 8v6.3l-3.8 1.9v-8.2z"),
}


def main(folder):
    for name, body in ICONS.items():
        with open(f"{folder}/{name}.svg", "w", encoding="utf-8", newline="\n") as out:
            out.write(f"{HEAD}{body}</svg>\n")


if __name__ == "__main__":
    main(sys.argv[1])
