#!/usr/bin/env python3
"""Writes culture-growth.csv: optical counts of three made-up bacterial cultures
sampled every 30 minutes for a day, growing from about 100 to 10^8 cells per
millilitre (six decades) before they level off; one culture is killed by an
antibiotic at hour 14 and a few samples read 0 (below the detection limit).
Deterministic: a fixed seed."""

import math
import random

random.seed(17)


def logistic(hours, start, rate, capacity, lag):
    """Cells per mL after a lag phase, growing exponentially towards the capacity."""
    grown = max(0.0, hours - lag)
    return capacity / (1 + (capacity / start - 1) * math.exp(-rate * grown))


with open("culture-growth.csv", "w", encoding="utf-8", newline="\n") as out:
    out.write("time [h],wild type [1/mL],mutant [1/mL],treated [1/mL]\n")
    for step in range(49):
        hours = step / 2
        wild = logistic(hours, 120, 1.05, 3e8, 2.0) * random.lognormvariate(0, 0.08)
        mutant = logistic(hours, 90, 0.72, 8e7, 3.5) * random.lognormvariate(0, 0.08)
        treated = logistic(hours, 150, 0.95, 2e8, 2.5)
        if hours > 14:
            treated *= math.exp(-1.6 * (hours - 14))
        treated *= random.lognormvariate(0, 0.1)
        # Counts under 30 per mL are below the detection limit and recorded as 0.
        cells = ["0" if c < 30 else f"{c:.3g}" for c in (wild, mutant, treated)]
        out.write(f"{hours:g},{cells[0]},{cells[1]},{cells[2]}\n")
