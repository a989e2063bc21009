#!/usr/bin/env python3
"""Computes every value of the section table anew from the five dimensions of each section, so that
a wrong digit cannot hide:  check_sections.py TABLE.csv

A section is two flanges, a web and four root fillets: each fillet is the square of side r in the
corner without the quarter circle.
"""
import sys
from math import pi, sqrt

STEEL = 0.785   # kg/m for each cm2
QUARTER = pi / 4


def fillet(r):
    """Area, distance of the centroid from the corner's sides, own moment of inertia."""
    area = (1 - QUARTER) * r**2
    arc = r - 4 * r / (3 * pi)   # centroid of the quarter circle, from the corner's sides
    centroid = (r**3 / 2 - QUARTER * r**2 * arc) / area
    circle = pi * r**4 / 16 - QUARTER * r**2 * (4 * r / (3 * pi))**2 + QUARTER * r**2 * arc**2
    return area, centroid, r**4 / 3 - circle - area * centroid**2


def properties(h, b, tw, tf, r):
    """The published values in their units: cm2, kg/m, cm4, cm3, cm."""
    web = h - 2 * tf
    area_f, off_f, own_f = fillet(r)
    at_y, at_z = web / 2 - off_f, tw / 2 + off_f
    area = 2 * b * tf + web * tw + 4 * area_f
    strong = b * h**3 / 12 - (b - tw) * web**3 / 12 + 4 * (own_f + area_f * at_y**2)
    weak = tf * b**3 / 6 + web * tw**3 / 12 + 4 * (own_f + area_f * at_z**2)
    plastic = 2 * (b * tf * (h - tf) / 2 + tw * web**2 / 8 + 2 * area_f * at_y)
    return {"A": area / 1e2, "G": area / 1e2 * STEEL,
            "Iy": strong / 1e4, "Wel.y": 2 * strong / h / 1e3, "Wpl.y": plastic / 1e3,
            "iy": sqrt(strong / area) / 10,
            "Iz": weak / 1e4, "Wel.z": 2 * weak / b / 1e3, "iz": sqrt(weak / area) / 10}


def unit_of_last_digit(text):
    """What one more in the last digit means; whole numbers from 10000 are rounded to the ten."""
    decimals = len(text.partition(".")[2])
    return 10.0 if not decimals and int(text) >= 10000 else 10.0 ** -decimals


def main():
    rows = [line.strip().split(",") for line in open(sys.argv[1], encoding="ascii")
            if line.strip() and not line.startswith("#")]
    names, rows = rows[0], rows[1:]
    wrong = 0
    for row in rows:
        given = dict(zip(names, row))
        computed = properties(*(float(given[name]) for name in ("h", "b", "tw", "tf", "r")))
        for name, value in computed.items():
            # Half a unit is correct rounding. Some published values were cut or computed from
            # rounded ones: a whole unit is allowed.
            if abs(float(given[name]) - value) > unit_of_last_digit(given[name]):
                wrong += 1
                print(f"{row[0]}: {name} is {given[name]}, computed {value:.4f}")
    print(f"{len(rows)} sections, {wrong} faults")
    return wrong > 0 or len(rows) != 18


if __name__ == "__main__":
    sys.exit(main())
