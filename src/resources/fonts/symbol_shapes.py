"""The key symbols of the HUD's face, drawn as strokes with round ends so that they match its letters.

Units are thousandths of the font size; y grows upwards from the baseline; capitals are 705 high. Each function
strokes the centre lines of one symbol on a Brush and returns its advance width.
"""

import math

STROKE = 92
HALF = STROKE / 2
TOP = 705 - HALF  # centre line of a stroke that ends at the height of capitals
BOTTOM = HALF
MIDDLE = 352
BEARING = 52  # blank at each side
LEFT = BEARING + HALF
KAPPA = 4 / 3 * math.tan(math.pi / 8)


class Brush:
    """Strokes lines and arcs onto an outline pen as overlapping contours of one direction."""

    def __init__(self, pen, stroke=STROKE):
        self.pen = pen
        self.half = stroke / 2

    def lines(self, *points, closed=False):
        pairs = list(zip(points, points[1:]))
        if closed:
            pairs.append((points[-1], points[0]))
        for start, end in pairs:
            self._segment(start, end)

    def _segment(self, start, end):
        angle = math.degrees(math.atan2(end[1] - start[1], end[0] - start[0]))
        contour = self._arc_points(end, self.half, angle + 90, angle - 90)
        contour += self._arc_points(start, self.half, angle - 90, angle - 270)
        self._fill(contour)

    def arc(self, centre, radius, start, end):
        """From `start` to `end` degrees, counter-clockwise, with round ends."""
        on = lambda a: (centre[0] + radius * math.cos(math.radians(a)), centre[1] + radius * math.sin(math.radians(a)))
        contour = self._arc_points(centre, radius + self.half, end, start)
        contour += self._arc_points(on(start), self.half, start, start - 180)
        contour += self._arc_points(centre, radius - self.half, start, end)
        contour += self._arc_points(on(end), self.half, end + 180, end)
        self._fill(contour)

    def circle(self, centre, radius):
        self._fill(self._arc_points(centre, radius + self.half, 360, 0))
        self._fill(self._arc_points(centre, radius - self.half, 0, 360))

    @staticmethod
    def _arc_points(centre, radius, start, end):
        """Cubic pieces (p0, c1, c2, p1) of at most a quarter turn."""
        count = max(1, math.ceil(abs(end - start) / 90 - 1e-9))
        step = math.radians(end - start) / count
        k = 4 / 3 * math.tan(step / 4)
        pieces = []
        for i in range(count):
            a, b = math.radians(start) + i * step, math.radians(start) + (i + 1) * step
            at = lambda t, d=0: (
                centre[0] + radius * (math.cos(t) - d * math.sin(t)),
                centre[1] + radius * (math.sin(t) + d * math.cos(t)),
            )
            pieces.append((at(a), at(a, k), at(b, -k), at(b)))
        return pieces

    def _fill(self, pieces):
        self.pen.moveTo(pieces[0][0])
        last = pieces[0][0]
        for p0, c1, c2, p1 in pieces:
            if math.dist(last, p0) > 0.5:
                self.pen.lineTo(p0)
            self.pen.curveTo(c1, c2, p1)
            last = p1
        self.pen.closePath()


def advance(right):
    """Of a symbol whose rightmost centre line is at `right`."""
    return round(right + HALF + BEARING)


def control(brush):
    brush.lines((LEFT, 430), (LEFT + 215, TOP), (LEFT + 430, 430))
    return advance(LEFT + 430)


def enter(brush):
    brush.lines((LEFT, 210), (LEFT + 215, 430), (LEFT + 430, 210))
    brush.lines((LEFT, 620), (LEFT + 430, 620))
    return advance(LEFT + 430)


def option(brush):
    right = LEFT + 630
    brush.lines((LEFT, TOP), (LEFT + 175, TOP), (LEFT + 445, BOTTOM), (right, BOTTOM))
    brush.lines((LEFT + 410, TOP), (right, TOP))
    return advance(right)


def arrow_outline(brush, bottom):
    """A hollow arrow upwards, its foot at `bottom`."""
    half, shaft, shoulder = 340, 165, bottom + 0.47 * (TOP + 24 - bottom)
    middle = LEFT + half
    brush.lines(
        (middle, TOP + 24), (middle + half, shoulder), (middle + shaft, shoulder), (middle + shaft, bottom),
        (middle - shaft, bottom), (middle - shaft, shoulder), (middle - half, shoulder), closed=True,
    )  # fmt: skip
    return advance(middle + half)


def shift(brush):
    return arrow_outline(brush, BOTTOM)


def caps_lock(brush):
    width = arrow_outline(brush, 190)
    middle = width / 2
    brush.lines((middle - 165, 24), (middle + 165, 24))
    return width


def command(brush):
    radius, square = 118, 118
    left, right = LEFT + 2 * radius, LEFT + 2 * radius + 2 * square
    low, high = MIDDLE - square, MIDDLE + square
    brush.lines((left, low - radius), (left, high + radius))
    brush.lines((right, low - radius), (right, high + radius))
    brush.lines((left - radius, low), (right + radius, low))
    brush.lines((left - radius, high), (right + radius, high))
    brush.arc((left - radius, high + radius), radius, 0, 270)
    brush.arc((right + radius, high + radius), radius, -90, 180)
    brush.arc((right + radius, low - radius), radius, -180, 90)
    brush.arc((left - radius, low - radius), radius, 90, 360)
    return advance(right + 2 * radius)


def arrow(brush, tail, tip, head=200):
    """A line with an open head."""
    brush.lines(tail, tip)
    back = math.atan2(tail[1] - tip[1], tail[0] - tip[0])
    for turn in (-math.pi / 4, math.pi / 4):
        brush.lines(tip, (tip[0] + head * math.cos(back + turn), tip[1] + head * math.sin(back + turn)))


def tab(brush, mirrored=False):
    right = LEFT + 640
    place = (lambda x: LEFT + right - x) if mirrored else (lambda x: x)
    arrow(brush, (place(LEFT), MIDDLE), (place(right - 130), MIDDLE), 230)
    brush.lines((place(right), MIDDLE - 200), (place(right), MIDDLE + 200))
    return advance(right)


def back_tab(brush):
    return tab(brush, mirrored=True)


def space(brush):
    brush.lines((LEFT, 130), (LEFT, -10), (LEFT + 470, -10), (LEFT + 470, 130))
    return advance(LEFT + 470)


def delete_forward(brush, mirrored=False):
    right = LEFT + 790
    place = (lambda x: LEFT + right - x) if mirrored else (lambda x: x)
    low, high = 82, 622
    brush.lines(
        (place(LEFT), low), (place(LEFT + 520), low), (place(right), MIDDLE), (place(LEFT + 520), high),
        (place(LEFT), high), closed=True,
    )  # fmt: skip
    cross, arm = place(LEFT + 300), 96
    brush.lines((cross - arm, MIDDLE - arm), (cross + arm, MIDDLE + arm))
    brush.lines((cross - arm, MIDDLE + arm), (cross + arm, MIDDLE - arm))
    return advance(right)


def delete_backward(brush):
    return delete_forward(brush, mirrored=True)


def return_key(brush):
    right = LEFT + 610
    brush.lines((right, 600), (right, 270))
    arrow(brush, (right, 270), (LEFT, 270), 225)
    return advance(right)


def page_up(brush, mirrored=False):
    middle = LEFT + 190
    place = (lambda y: TOP + BOTTOM - y) if mirrored else (lambda y: y)
    arrow(brush, (middle, place(BOTTOM)), (middle, place(TOP)), 250)
    for y in (165, 315):
        brush.lines((middle - 150, place(y)), (middle + 150, place(y)))
    return advance(LEFT + 380)


def page_down(brush):
    return page_up(brush, mirrored=True)


def arrow_left(brush):
    arrow(brush, (LEFT + 600, MIDDLE), (LEFT, MIDDLE), 260)
    return advance(LEFT + 600)


def arrow_right(brush):
    arrow(brush, (LEFT, MIDDLE), (LEFT + 600, MIDDLE), 260)
    return advance(LEFT + 600)


def arrow_up(brush):
    arrow(brush, (LEFT + 190, BOTTOM), (LEFT + 190, TOP), 260)
    return advance(LEFT + 380)


def arrow_down(brush):
    arrow(brush, (LEFT + 190, TOP), (LEFT + 190, BOTTOM), 260)
    return advance(LEFT + 380)


def arrow_home(brush):
    low, high = 102, 602
    brush.lines((LEFT + 500, low), (LEFT, high))
    brush.lines((LEFT + 330, high), (LEFT, high), (LEFT, high - 330))
    return advance(LEFT + 500)


def arrow_end(brush):
    low, high = 102, 602
    brush.lines((LEFT, high), (LEFT + 500, low))
    brush.lines((LEFT + 170, low), (LEFT + 500, low), (LEFT + 500, low + 330))
    return advance(LEFT + 500)


def power(brush):
    centre, radius = (LEFT + 285, 316), 285
    brush.arc(centre, radius, 128, 412)
    brush.lines((centre[0], 330), (centre[0], TOP + 20))
    return advance(LEFT + 570)


def eject(brush):
    middle, half = LEFT + 300, 300
    brush.lines((middle, TOP), (middle + half, 260), (middle - half, 260), closed=True)
    brush.lines((middle - half, 70), (middle + half, 70))
    return advance(middle + half)


def escape(brush):
    centre, radius = (LEFT + 290, 330), 290
    brush.arc(centre, radius, 178, 452)
    tip = (centre[0] - 265, centre[1] + 300)
    brush.lines(centre, tip)
    brush.lines((tip[0] + 235, tip[1]), tip, (tip[0], tip[1] - 235))
    return advance(LEFT + 580)


def enclosing_circle(brush):
    """Sits around the character before it, which is taken to be of middling width."""
    brush.circle((-270, MIDDLE), 440)
    return 0


SYMBOLS = {
    "⌃": control, "⌥": option, "⇧": shift, "⌘": command, "⇥": tab, "⇤": back_tab, "⌅": enter, "␣": space,
    "⌦": delete_forward, "⏎": return_key, "⌫": delete_backward, "⇞": page_up, "⇪": caps_lock, "←": arrow_left,
    "→": arrow_right, "↑": arrow_up, "↓": arrow_down, "⇟": page_down, "⏻": power, "⏏": eject, "⎋": escape,
    "↖": arrow_home, "↘": arrow_end, "\N{COMBINING ENCLOSING CIRCLE}": enclosing_circle,
}  # fmt: skip
