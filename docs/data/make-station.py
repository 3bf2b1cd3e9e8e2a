#!/usr/bin/env python3
"""Writes station-hourly.csv: ten days of hourly readings of a made-up weather
station, 2024-03-25 to 2024-04-03 (across the change to summer time in Central
Europe on 2024-03-31), times in UTC with "Z". Deterministic: a fixed seed."""

import datetime
import math
import random

random.seed(2024)
start = datetime.datetime(2024, 3, 25, tzinfo=datetime.timezone.utc)
pressure = 1012.0
with open("station-hourly.csv", "w", encoding="utf-8", newline="\n") as out:
    out.write("time,temperature [degC],pressure [hPa]\n")
    for hour in range(10 * 24):
        t = start + datetime.timedelta(hours=hour)
        # A daily cycle peaking mid-afternoon local time, a warming trend, noise.
        daily = 4.5 * math.sin(2 * math.pi * (hour - 8) / 24)
        temperature = 6.0 + 0.35 * hour / 24 + daily + random.gauss(0, 0.6)
        pressure += random.gauss(0, 0.45) - 0.02 * (pressure - 1012.0)
        cell = "" if hour in (101, 102) else f"{temperature:.1f}"  # a gap: the sensor was serviced
        out.write(f"{t:%Y-%m-%dT%H:%MZ},{cell},{pressure:.1f}\n")
