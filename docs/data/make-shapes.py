#!/usr/bin/env python3
"""Writes made-up data sets of the shapes people's CSV files have, for the
pictures in the README and for trying kelchart by hand. Deterministic: fixed
seeds. Nothing here is copied from any public data set.

  generation-long.csv   long format: year, source, generation (one row per year and source)
  wind-grid.csv         a grid of longitude, latitude and wind speed: x repeats, unordered
  weather-daily.csv     semicolon-separated daily weather with a text column
  sales-monthly.csv     year-month dates, two series of different units
  quarterly-growth.csv  year-quarter texts
  visitors-daily.csv    month-name dates ("Jan 1 2000")
"""

import datetime
import math
import random


def generation_long():
    random.seed(1)
    sources = (("coal", 1900, -40), ("gas", 600, 45), ("nuclear", 780, 0), ("wind", 10, 18), ("solar", 1, 9))
    with open("generation-long.csv", "w", encoding="utf-8") as out:
        out.write("year,source,net generation [TWh]\n")
        for year in range(2001, 2024):
            for name, base, trend in sources:
                value = max(0.5, base + trend * (year - 2001) + random.gauss(0, 25))
                out.write(f"{year},{name},{value:.1f}\n")


def wind_grid():
    random.seed(2)
    with open("wind-grid.csv", "w", encoding="utf-8") as out:
        out.write("lon [degree_east],lat [degree_north],speed [m/s]\n")
        cells = [(lon, lat) for lon in range(-10, 31, 2) for lat in range(36, 71, 2)]
        random.shuffle(cells)
        for lon, lat in cells:
            speed = abs(6 + 0.12 * (lat - 36) + 2 * math.sin(lon / 6) + random.gauss(0, 1.2))
            out.write(f"{lon},{lat},{speed:.1f}\n")


def weather_daily():
    random.seed(3)
    with open("weather-daily.csv", "w", encoding="utf-8") as out:
        out.write("date;temp_max [degC];temp_min [degC];precipitation [mm];weather\n")
        start = datetime.date(2015, 1, 1)
        for i in range(2 * 365):
            day = start + datetime.timedelta(days=i)
            mean = 12 + 10 * math.sin(2 * math.pi * (i - 100) / 365)
            rain = max(0.0, random.gauss(-1, 4))
            kind = "rain" if rain > 3 else "drizzle" if rain > 0 else random.choice(["sun", "fog", "sun"])
            out.write(f"{day};{mean + 4 + random.gauss(0, 2):.1f};{mean - 4 + random.gauss(0, 2):.1f};"
                      f"{rain:.1f};{kind}\n")


def sales_monthly():
    random.seed(4)
    with open("sales-monthly.csv", "w", encoding="utf-8") as out:
        out.write("month,revenue [kEUR],temperature [degC]\n")
        for i in range(60):
            year, month = 2019 + i // 12, i % 12 + 1
            season = math.sin(2 * math.pi * (month - 4) / 12)
            out.write(f"{year}-{month:02d},{120 + 2 * i + 30 * season + random.gauss(0, 8):.1f},"
                      f"{11 + 9 * season + random.gauss(0, 1):.1f}\n")


def quarterly_growth():
    random.seed(5)
    with open("quarterly-growth.csv", "w", encoding="utf-8") as out:
        out.write("quarter,growth [%]\n")
        for i in range(50 * 4):
            out.write(f"{1974 + i // 4}Q{i % 4 + 1},{random.gauss(0.5, 0.8):.2f}\n")


def visitors_daily():
    random.seed(6)
    names = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"]
    with open("visitors-daily.csv", "w", encoding="utf-8") as out:
        out.write("date,visitors\n")
        start = datetime.date(2000, 1, 1)
        for i in range(75):
            day = start + datetime.timedelta(days=i)
            count = int(200 + 50 * math.sin(i / 7 * 2 * math.pi) + random.gauss(0, 10))
            out.write(f"{names[day.month - 1]} {day.day} {day.year},{count}\n")


for make in (generation_long, wind_grid, weather_daily, sales_monthly, quarterly_growth, visitors_daily):
    make()
