#!/usr/bin/env python3
"""Writes a CSV of a random walk, for timing kelchart on large inputs:
   scripts/make-walk-csv.py ROWS OUT.csv
Two columns, "t" (0, 1, ...) and "walk"; the same seed gives the same file."""
import random
import sys


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    rows = int(sys.argv[1])
    random.seed(1)
    walk = 0.0
    with open(sys.argv[2], "w") as out:
        out.write("t,walk\n")
        lines = []
        for t in range(rows):
            walk += random.gauss(0.0, 1.0)
            lines.append(f"{t},{walk:.4f}\n")
            if len(lines) == 100000:
                out.writelines(lines)
                lines.clear()
        out.writelines(lines)


if __name__ == "__main__":
    main()
