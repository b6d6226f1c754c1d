#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The figures that an analysis has to show, worked out from the typed marks by themselves.

expected_figures.py MARKS prints an object: by "parameter|date" the index and the means of weightage and score. MARKS is a
JSON list of [parameter, date, weightage, score].
"""
import json
import struct
import sys
from collections import defaultdict


def single(number):
    return struct.unpack("f", struct.pack("f", number))[0]


def index(marks):
    rated = [(weightage, score) for weightage, score in marks if weightage and score]
    mean = single(sum(weightage for weightage, _ in rated) / len(marks))
    total = 0
    for weightage, score in rated:
        total = round(total + single(score * single(weightage / mean)))
    return single(total / len(marks))


groups = defaultdict(list)
for parameter, date, weightage, score in json.loads(sys.argv[1]):
    groups[parameter + "|" + date].append((weightage, score))
print(json.dumps({name: [index(marks)] + [round(sum(mark[i] for mark in marks) / len(marks), 2) for i in (0, 1)]
                  for name, marks in groups.items()}))
