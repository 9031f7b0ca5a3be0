"""Emits a GObject signal through PyGObject to a handler that reads a dictionary of four entries whole."""
import json
import statistics
import time

from gi.repository import GLib, GObject

INFO = {"language": "en", "serial": 123_456_789_012, "level": 0.07, "charging": True}
TYPES = {"language": "s", "serial": "x", "level": "d", "charging": "b"}
SHORTEST_BATCH = 200_000
TIME_FOR_A_WORK = 200_000_000


class Center(GObject.Object):
    __gsignals__ = {
        "converted": (GObject.SignalFlags.RUN_FIRST, None, (str, str, GLib.Variant)),
        "by-reference": (GObject.SignalFlags.RUN_FIRST, None, (str, str, object)),
    }


class Handler:
    def __init__(self):
        self.events = 0

    def got_converted(self, _center, name, text, info):
        self.read(name, text, info.unpack())

    def read(self, name, text, info):
        if info["serial"] == INFO["serial"] and info["charging"] and info["level"] and info["language"]:
            self.events += 1

    def got_reference(self, _center, name, text, info):
        self.read(name, text, info)


def measure(work, run):
    def batch(times):
        start = time.thread_time_ns()
        for _ in range(times):
            run()
        return time.thread_time_ns() - start

    times = 1
    while batch(times) < SHORTEST_BATCH:
        times *= 2
    each = []
    end = time.monotonic_ns() + TIME_FOR_A_WORK
    while time.monotonic_ns() < end or len(each) < 11:
        each.append(batch(times) / times)
    print(json.dumps({"work": work, "nanoseconds": statistics.median(each)}), flush=True)


def main():
    center = Center()
    handler = Handler()
    center.connect("converted", handler.got_converted)
    center.connect("by-reference", handler.got_reference)
    posts = 0

    def post_converted():
        nonlocal posts
        posts += 1
        info = GLib.Variant("a{sv}", {key: GLib.Variant(TYPES[key], value) for key, value in INFO.items()})
        center.emit("converted", "BatteryLow", "main battery", info)

    def post_reference():
        nonlocal posts
        posts += 1
        center.emit("by-reference", "BatteryLow", "main battery", dict(INFO))

    measure("pygobject/post/converted", post_converted)
    measure("pygobject/post/by_reference", post_reference)
    assert handler.events == posts


if __name__ == "__main__":
    main()
