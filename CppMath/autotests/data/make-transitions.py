#!/usr/bin/env python3
"""Writes every change of UTC offset from 1900 to 2200 in the zones the calendar sweep uses, as
Python's zoneinfo reads the system's zone files (its own reader, rule at the end included):
one line per change, "zone instant offset", the instant in seconds since 1970 UTC and the
offset in seconds east of UTC from that instant on.

    python3 make-transitions.py > transitions.txt
"""
from datetime import datetime, timezone
from zoneinfo import ZoneInfo

ZONES = ["Europe/Berlin", "America/Sao_Paulo", "Australia/Lord_Howe", "Asia/Kathmandu",
         "America/St_Johns", "Pacific/Chatham", "Africa/Casablanca", "Europe/Dublin",
         "America/New_York"]
START = int(datetime(1900, 1, 1, tzinfo=timezone.utc).timestamp())
END = int(datetime(2200, 1, 1, tzinfo=timezone.utc).timestamp())
PROBE = 6 * 3600  # no zone changes its offset twice within six hours


def offset(zone, t):
    return int(datetime.fromtimestamp(t, zone).utcoffset().total_seconds())


def changes(zone):
    before = offset(zone, START)
    for t in range(START + PROBE, END + PROBE, PROBE):
        after = offset(zone, t)
        if after == before:
            continue
        low, high = t - PROBE, t  # offset(low) == before, offset(high) != before
        while high - low > 1:
            middle = (low + high) // 2
            (low, high) = (middle, high) if offset(zone, middle) == before else (low, middle)
        yield high, offset(zone, high)
        before = after


for name in ZONES:
    zone = ZoneInfo(name)
    print(name, START, offset(zone, START))
    for instant, new in changes(zone):
        print(name, instant, new)
