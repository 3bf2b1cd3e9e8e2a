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
  load-hourly.csv       a byte-order mark, CRLF line ends, ISO times with an offset
  products-sold.csv     300 categories on a discrete axis
  lab-results.tsv       tab-separated, quoted names, a line break inside quotes
  sensors-wide.csv      23 series with long names
  anomaly-yearly.csv    years as plain numbers (a continuous axis)
  body-measures.csv     a scatter of height and weight with a group column
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


def load_hourly():
    random.seed(7)
    with open("load-hourly.csv", "w", encoding="utf-8-sig", newline="\r\n") as out:
        out.write("time,load [MW]\n")
        start = datetime.datetime(2023, 10, 27, tzinfo=datetime.timezone(datetime.timedelta(hours=2)))
        for hour in range(96):
            t = start + datetime.timedelta(hours=hour)
            load = 5200 + 1400 * math.sin(2 * math.pi * (hour - 9) / 24) + random.gauss(0, 120)
            out.write(f"{t:%Y-%m-%dT%H:%M}+02:00,{load:.0f}\n")


def products_sold():
    random.seed(8)
    with open("products-sold.csv", "w", encoding="utf-8") as out:
        out.write("product,sold\n")
        for i in range(300):
            out.write(f"P-{1000 + i},{int(random.expovariate(1 / 40))}\n")


def lab_results():
    random.seed(9)
    with open("lab-results.tsv", "w", encoding="utf-8") as out:
        out.write("sample\tpH [1]\tconductivity [uS/cm]\n")
        for i in range(12):
            name = f'"well {i + 1}\n(north)"' if i % 4 == 0 else f'"well {i + 1}, east"'
            out.write(f"{name}\t{random.gauss(7.1, 0.3):.2f}\t{random.gauss(540, 60):.0f}\n")


def sensors_wide():
    random.seed(10)
    names = [f"thermocouple {i + 1:02d} in the north-east corner of hall {i // 4 + 1}" for i in range(23)]
    with open("sensors-wide.csv", "w", encoding="utf-8") as out:
        out.write("minute [min]," + ",".join(f"{n} [degC]" for n in names) + "\n")
        for minute in range(0, 240, 5):
            row = [f"{20 + i * 0.4 + 3 * math.sin((minute + 10 * i) / 40) + random.gauss(0, 0.2):.2f}"
                   for i in range(23)]
            out.write(f"{minute}," + ",".join(row) + "\n")


def anomaly_yearly():
    random.seed(11)
    with open("anomaly-yearly.csv", "w", encoding="utf-8") as out:
        out.write("year,anomaly [K]\n")
        for year in range(1880, 2024):
            trend = 0.0 if year < 1950 else 0.018 * (year - 1950)
            out.write(f"{year},{-0.3 + trend + random.gauss(0, 0.12):.2f}\n")


def body_measures():
    random.seed(12)
    with open("body-measures.csv", "w", encoding="utf-8") as out:
        out.write("height [cm],group,weight [kg]\n")
        for _ in range(300):
            group = random.choice(["adults", "teenagers"])
            height = round(random.gauss(172 if group == "adults" else 160, 9))
            weight = 0.9 * (height - 100) + random.gauss(0, 7) - (8 if group == "teenagers" else 0)
            out.write(f"{height},{group},{weight:.1f}\n")


for make in (generation_long, wind_grid, weather_daily, sales_monthly, quarterly_growth, visitors_daily,
             load_hourly, products_sold, lab_results, sensors_wide, anomaly_yearly, body_measures):
    make()
