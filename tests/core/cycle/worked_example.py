#!/usr/bin/env python3
"""The worked example of docs/predictions.md, calculated without the program.

Every operation is done in double precision and rounded to single at once, which gives the same bits
as single precision does. Prints the table of the document and the digest that the test expects.
"""

import datetime
import struct


def f32(x):
    return struct.unpack('<f', struct.pack('<f', x))[0]


def add(a, b):
    return f32(a + b)


def mul(a, b):
    return f32(a * b)


def div(a, b):
    return f32(a / b)


FIRST = datetime.date(2024, 1, 3)
LENGTHS = [26, 28, 27, 29, 28]
LEVELS = ['3321', '33211', '3321', '33211', '2321']
DAYS_PASSED = 28
ROWS = [11, 12, 13, 14, 15, 16, 17, 28, 29, 30, 31, 32, 33, 40, 43, 54, 56, 58, 84, 364]

H = [0.0] * 16
for length in LENGTHS:
    H[length - 21] += 1.0
H = [mul(div(1.0, float(len(LENGTHS))), h) for h in H]

level_sum = [0] * 7
day_count = [0] * 7
for levels in LEVELS:
    for t, level in enumerate(levels):
        level_sum[t] += int(level)
        day_count[t] += 1
mean_level = [div(float(s), float(len(LENGTHS))) for s in level_sum]
bleed_share = [div(float(s), float(len(LENGTHS))) for s in day_count]

S = [0.0] * 365
for j in range(16):
    S[21 + j] = H[j]
passed = 0.0
for k in range(21, DAYS_PASSED):
    passed = add(passed, S[k])
remaining = 0.0
for k in range(DAYS_PASSED, 37):
    remaining = add(remaining, S[k])
ratio = div(passed, remaining)
for k in range(21, DAYS_PASSED):
    S[k] = 0.0
for k in range(DAYS_PASSED, 37):
    S[k] = add(mul(S[k], ratio), S[k])
for k in range(42, 365):
    total = 0.0
    for j in range(16):
        total = add(total, mul(S[k - 21 - j], H[j]))
    S[k] = add(S[k], total)

A = [0.0] * 365
B = [0.0] * 365
for k in range(DAYS_PASSED, 365):
    for t in range(7):
        if k - t >= 0:
            A[k] = add(A[k], mul(mean_level[t], S[k - t]))
            B[k] = add(B[k], mul(bleed_share[t], S[k - t]))

O = [0.0] * 13
for j in range(16):
    length = 21 + j
    kernel = [0, 0, 1.0, 0, 0] if length % 2 == 0 else [0, 0, 0.5, 0.5, 0]
    for m in range(5):
        i = length // 2 - 10 + m
        O[i] = add(mul(kernel[m], H[j]), O[i])

V = [0.0] * 365
S[0] = 1.0
for k in range(365):
    for i in range(13):
        if k - 8 - i >= 0:
            V[k] = add(V[k], mul(O[i], S[k - 8 - i]))
S[0] = 0.0

P = [0.0] * 365
W = [0, 0, 0.5, 1.0, 1.0, 1.0, 0]
for k in range(3, 365):
    for j in range(7):
        if k + 3 - j < 365:
            P[k] = add(P[k], mul(V[k + 3 - j], W[j]))

digest = 0xCBF29CE484222325
for values in (S, A, B, V, P):
    for value in values:
        for byte in struct.pack('<f', value):
            digest = ((digest ^ byte) * 0x100000001B3) % 2**64

last = FIRST + datetime.timedelta(days=sum(LENGTHS))
for k in ROWS:
    cells = ['%.9g' % values[k] for values in (S, A, B, V, P)]
    print('| %d | %s | %s |' % (k, last + datetime.timedelta(days=k), ' | '.join(cells)))


def bits(x):
    return '0x%08X' % struct.unpack('<I', struct.pack('<f', x))


print('bits', [bits(x) for x in (mean_level[0], bleed_share[4], S[28], S[29], B[29], A[29], V[14],
                                P[14], S[84])])
print('mean level', ['%.9g' % x for x in mean_level])
print('share', ['%.9g' % x for x in bleed_share])
print('ratio %.9g' % ratio, 'offsets', {8 + i: '%.9g' % x for i, x in enumerate(O) if x})
print('digest 0x%016X' % digest)
