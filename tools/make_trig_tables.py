#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints base/trig_tables.h.

    python3 tools/make_trig_tables.py > base/trig_tables.h

Every constant is summed here from its Taylor series in whole numbers scaled by 2**BITS, and only
then cut into doubles, so the tables depend on no mathematical library. The head of each entry is
short on purpose: a product of two heads, or a sum of two arc tangent heads, is exact in a double.
"""

from fractions import Fraction

BITS = 400
ONE = 1 << BITS
GUARD = 1 << 40  # the error of the sums below stays far under this many units


def arctan_of_ratio(num, den):
    """Arc tangent of num/den, |num/den| <= 1/2, scaled by ONE."""
    power = ONE * num // den
    total, n = 0, 0
    while power:
        total += (-power if n % 2 else power) // (2 * n + 1)
        power = power * num * num // (den * den)
        n += 1
    return total


PI = 16 * arctan_of_ratio(1, 5) - 4 * arctan_of_ratio(1, 239)


def arctan(num, den):
    """As above for 0 <= num/den <= 1: values above 1/2 are folded at 1."""
    if 2 * num <= den:
        return arctan_of_ratio(num, den)
    return PI // 4 - arctan_of_ratio(den - num, den + num)


def sine(angle):
    """Sine of a scaled angle in radians."""
    term, total, n = angle, 0, 1
    while term:
        total += term
        term = -term * angle // ONE * angle // ONE // ((n + 1) * (n + 2))
        n += 2
        if abs(term) < 4:
            break
    return total


def nearest_double(value):
    """The double nearest to a Fraction: Python divides whole numbers correctly rounded."""
    return value.numerator / value.denominator


def cut_to_grid(value, grid_bits):
    """A Fraction rounded to a multiple of 2**-grid_bits."""
    return Fraction(round(value * 2**grid_bits), 2**grid_bits)


def cut_to_bits(value, bits):
    """A positive Fraction rounded to that many significant bits."""
    exponent = 0
    while value * 2**exponent < 2 ** (bits - 1):
        exponent += 1
    while value * 2**exponent >= 2**bits:
        exponent -= 1
    return Fraction(round(value * Fraction(2) ** exponent)) / Fraction(2) ** exponent


def scaled(value):
    """A scaled whole number as a Fraction; what is below the guard is noise and goes to zero."""
    return Fraction(0) if abs(value) < GUARD else Fraction(value, ONE)


def pair_line(value, head):
    tail = nearest_double(value - head)
    return "    {%s, %s}," % (nearest_double(head).hex(), tail.hex())


def print_pairs(comment, declaration, values, cut):
    print(comment)
    print(declaration + " = {{")
    for value in values:
        print(pair_line(value, cut(value) if value else Fraction(0)))
    print("}};\n")


def print_step_parts():
    """pi/256 in three parts of 29 bits and a last one, so that step count times part is exact."""
    rest = scaled(PI) / 256
    print("// pi / 256 as a sum; the first three have 29 bits each.")
    print("inline constexpr std::array<double, 4> step_parts = {")
    parts = []
    for _ in range(3):
        part = cut_to_bits(rest, 29) if rest > 0 else -cut_to_bits(-rest, 29)
        parts.append(nearest_double(part).hex())
        rest -= part
    parts.append(nearest_double(rest).hex())
    print("    " + ", ".join(parts[:2]) + ",\n    " + ", ".join(parts[2:]) + "};\n")


def main():
    print("// SPDX-License-Identifier: MIT\n//")
    print("// Constants of base/trig.cpp, printed by tools/make_trig_tables.py: change that, not this.")
    print("#pragma once\n\n#include <array>\n")
    print("// clang-format off\n\nnamespace quorix {\n")
    print("// A real number as the sum of a short double and what that leaves.")
    print("struct SplitReal {\n  double head;\n  double tail;\n};\n")
    print_step_parts()
    print("inline constexpr double steps_per_radian = %s;  // 256 / pi"
          % nearest_double(256 / scaled(PI)).hex())
    print("inline constexpr double full_turn = %s;  // 2 pi\n" % nearest_double(2 * scaled(PI)).hex())
    print_pairs("// Sine of step * pi / 256; heads of 26 bits.",
                "inline constexpr std::array<SplitReal, 129> sine_of_step",
                [scaled(sine(PI * i // 256)) if i < 128 else Fraction(1) for i in range(129)],
                lambda v: cut_to_bits(v, 26))
    print_pairs("// Arc tangent of step / 64; heads are multiples of 2 to the -40.",
                "inline constexpr std::array<SplitReal, 65> arc_tangent_of_step",
                [scaled(arctan(i, 64)) for i in range(65)],
                lambda v: cut_to_grid(v, 40))
    print_pairs("// 0, pi / 2 and pi, cut like the arc tangents.",
                "inline constexpr std::array<SplitReal, 3> quarter_turns",
                [scaled(PI * i // 2) for i in range(3)],
                lambda v: cut_to_grid(v, 40))
    print("}  // namespace quorix\n\n// clang-format on")


main()
