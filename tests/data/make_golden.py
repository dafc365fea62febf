#!/usr/bin/env python3
"""Writes the files in golden/, which pin the format of the data files byte by byte.

Shares no code with the program: the digits of pi, the cipher and the password rule are implemented
here a second time, independently. Run it only to add a file. A golden file that changes means that
existing diaries can no longer be read.
"""

import pathlib
import struct

HEADER = b"LU\x01\x00"
MASK = 0xFFFFFFFF


def pi_words(count):
    """The first `count` 32-bit words of the fractional part of pi, most significant word first."""
    bits, guard = 32 * count, 64
    one = 1 << (bits + guard)

    def arctan_of_inverse(x):
        total = term = one // x
        k, sign = 1, -1
        while term:
            term //= x * x
            k += 2
            total += sign * (term // k)
            sign = -sign
        return total

    pi = 4 * (4 * arctan_of_inverse(5) - arctan_of_inverse(239))
    fraction = (pi - 3 * one) >> guard
    return [(fraction >> (bits - 32 * (i + 1))) & MASK for i in range(count)]


PI = pi_words(18 + 4 * 256)


class Cipher:
    def __init__(self, key):
        self.p = PI[:18]
        self.s = [PI[18 + 256 * i:18 + 256 * (i + 1)] for i in range(4)]
        if not key:
            return
        ring = key + b"\0"
        j = 0
        for i in range(18):
            four = bytes(ring[(j + n) % len(ring)] for n in range(4))
            self.p[i] ^= int.from_bytes(four, "little")
            j += 4
        left = right = 0
        for table in [self.p] + self.s:
            for i in range(0, len(table), 2):
                left, right = self.encipher_halves(left, right)
                table[i], table[i + 1] = left, right

    def f(self, x):
        s = self.s
        mixed = (s[0][x & 0xFF] + s[1][x >> 8 & 0xFF]) & MASK
        return ((mixed ^ s[2][x >> 16 & 0xFF]) + s[3][x >> 24]) & MASK

    def encipher_halves(self, left, right):
        for r in range(16):
            left ^= self.p[r]
            right ^= self.f(left)
            left, right = right, left
        left, right = right, left
        return left ^ self.p[17], right ^ self.p[16]

    def encipher(self, data):
        blocks = struct.iter_unpack("<II", data)
        return b"".join(struct.pack("<II", *self.encipher_halves(*block)) for block in blocks)


# Character to byte. The five bytes that Windows-1252 leaves undefined stand for the control
# characters of the same number.
WINDOWS_1252 = {bytes([b]).decode("cp1252"): b for b in range(256)
                if b not in (0x81, 0x8D, 0x8F, 0x90, 0x9D)}
WINDOWS_1252.update({chr(b): b for b in (0x81, 0x8D, 0x8F, 0x90, 0x9D)})


def key_of(password):
    if all(c in WINDOWS_1252 for c in password):
        key = bytes(WINDOWS_1252[c] for c in password)
    else:
        key = password.encode("utf-8")
    return key[:55]


def day(year, month, dom):
    return year << 16 | month << 8 | dom


def day_values(records):
    return b"".join(struct.pack("<Ii", date, value) for date, value in records)


def note_pages(notes):
    pages = b""
    for date, text in notes:
        units = text.encode("utf-16-le")
        for i in range(len(units) // 2 // 34 + 1):
            pages += struct.pack("<I", date) + units[68 * i:68 * (i + 1)].ljust(68, b"\0")
    return pages


DAYS = day_values([(day(1601, 1, 1), 1), (day(2006, 2, 28), 2), (day(2006, 2, 31), -1),
                   (day(2006, 3, 1), 9750), (day(2500, 12, 31), 0x7FFFFFFF)])
# Pages are in order of entry, not of date. The first note has 34 units, exactly one page, and is
# followed by a second page whose text is all zeros.
PAGES = note_pages([(day(2006, 3, 1), "Thirty-four units make two pages.\u2026"),
                    (day(2006, 2, 28), "M\u00fcde, \U0001F600")])

FILES = {
    "days_plain": (DAYS, ""),
    "days_secret": (DAYS, "secret"),
    "days_latin1": (DAYS, "Gr\u00fc\u00dfe, \u00c5sa \u00ff"),
    "days_windows1252": (DAYS, "\u20ac5 \u201eja\u201c \u0178 \u0081\u009d"),
    "days_utf8": (DAYS, "\u043f\u0430\u0440\u043e\u043b\u044c \u00fc \U0001F600"),
    "days_55_bytes": (DAYS, "0123456789" * 5 + "abcde"),
    "days_utf8_cut": (DAYS, "\u044f" * 28),
    "pages_plain": (PAGES, ""),
    "pages_secret": (PAGES, "secret"),
}

if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent / "golden"
    folder.mkdir(exist_ok=True)
    for name, (records, password) in FILES.items():
        key = key_of(password)
        data = Cipher(key).encipher(records) if key else records
        (folder / f"{name}.dat").write_bytes(HEADER + data)
