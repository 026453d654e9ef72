#!/usr/bin/env python3
"""Writes the program files the export tests print: print.gsp (one step of each kind the
printed sheet treats apart, a memo) and noend.gsp (refused by the checks)."""
import os
import sys

sys.path.insert(0, sys.argv[1])
from make_fixtures import *  # noqa: E402,F401,F403

FILES = {
    'print.gsp': image([
        step([out(Y001, 1, TIMER, 50), out(EMAKE, 1, STC, 3)], [inp(X001, 1, 0), inp(X002, 2, 2)]),
        step([out(CN16, 4)], [inp(CN16, 0, 3), inp(65000, 0, 2)]),
        step([out(Y002, 1, STC, 4, disabled=True)], [inp(X003, 0, 2)]),
        step([out(JMP(1), 3)], [inp(ALL, 0, 2)]),
    ], remarks={1: 'first'}, memo='Check the needle\r\n0120'),
    'noend.gsp': image([step([out(Y001, 1, TIMER, 100)],
                             [inp(X001, 0, 0), inp(X002, 0, 0), inp(X003, 0, 1), inp(X001, 0, 0)])]),
}
for name, img in FILES.items():
    with open(os.path.join(sys.argv[2], name), 'wb') as f:
        f.write(transfer_text(img))
