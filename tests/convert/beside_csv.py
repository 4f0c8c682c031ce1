"""Writes tables with the csv module and has the program's own reader show them: both must see the same items.

The tables have what the two share: values with separators, double quotes and line ends in quotes, doubled inside.
"""

import csv
import random
import subprocess
import sys
import tempfile

PIECES = ["a", "Z", "0", " ", '"', '""', ",", ";", "\t", "\n", "\r", "\r\n", "é", "text", "'", "\\"]


def random_value(rng):
    return "".join(rng.choice(PIECES) for _ in range(rng.randrange(6)))


def random_table(rng):
    columns = rng.randrange(1, 9)
    return [[random_value(rng) for _ in range(columns)] for _ in range(rng.randrange(40))]


def shown(program, delimiter, path):
    out = subprocess.run([program, delimiter, path], check=True, capture_output=True).stdout.decode()
    return [[bytes.fromhex(item) for item in line[1:].split(" ")] for line in out.splitlines()]


def main():
    program = sys.argv[1]
    rng = random.Random(20030305)
    for round_number in range(120):
        table = random_table(rng)
        delimiter = rng.choice(",;\t")
        end = rng.choice(["\r\n", "\n", "\r"])
        # The module quotes the line ends that it writes itself, and leaves the other kind bare.
        quoting = rng.choice([csv.QUOTE_MINIMAL, csv.QUOTE_ALL]) if end == "\r\n" else csv.QUOTE_ALL
        with tempfile.NamedTemporaryFile("w", encoding="cp1252", newline="", suffix=".csv") as file:
            csv.writer(file, delimiter=delimiter, quoting=quoting, lineterminator=end).writerows(table)
            file.flush()
            expected = [[value.encode("cp1252") for value in row] for row in table]
            seen = shown(program, delimiter, file.name)
        if seen != expected:
            sys.exit(f"round {round_number}: {seen!r}, expected {expected!r}")
    print("120 tables read alike")


main()
