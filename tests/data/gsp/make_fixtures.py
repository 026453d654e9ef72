#!/usr/bin/env python3
"""Writes the program files (.gsp) used by the CLI, fuzz and benchmark runs.

Each file is built byte by byte from the machine's layout (header, 32 step records of
22 bytes, remarks, memo) and written as transfer text, independently of the C++ code, so
that the two can check each other. Function numbers are those of the bundled catalogue.
"""
import os
import struct

EMPTY_OUT = bytes([0, 0, 0xF0, 0, 0])
EMPTY_INP = bytes([0, 0, 0x23])


def out(kino, logic, delay_kind=0, value=0, disabled=False):
    flag = ((1 if disabled else 0) + delay_kind) * 16 | logic
    return struct.pack('<HBH', kino & 0xFFFF, flag, value)


def inp(kino, state, rel):
    return struct.pack('<HB', kino & 0xFFFF, rel * 16 | state)


def step(outs, inps):
    outs = list(outs) + [EMPTY_OUT] * (2 - len(outs))
    inps = list(inps) + [EMPTY_INP] * (4 - len(inps))
    return b''.join(outs) + b''.join(inps)


def encode_word(text, author, key):
    s = sum(int(d) for d in (key if author else key[4:]))
    body = bytes(242 - b + s for b in text.encode('ascii'))[: 16 if author else 8]
    body = body.ljust(16 if author else 8, b'\0')
    return body + bytes(245 - ord(k) for k in key)


def image(steps, remarks=None, memo='', author='', password='', memo_file=''):
    head = b'0106'
    head += encode_word(author, True, '0537') if author else bytes(20)
    head += encode_word(password, False, '20261116') if password else bytes(16)
    base, _, ext = memo_file.partition('.')
    head += base.encode().ljust(8, b'\0')[:8] + ext.encode().ljust(3, b'\0')[:3] + bytes(13)
    body = b''.join(steps) + b''.join(step([EMPTY_OUT], []) for _ in range(32 - len(steps)))
    rem = bytearray(640)
    for row, text in (remarks or {}).items():
        raw = text if isinstance(text, bytes) else text.encode('cp932')  # bytes: another code page
        rem[(row - 1) * 20:(row - 1) * 20 + 20] = raw[:20].ljust(20, b'\0')
    img = head + body + bytes(rem) + memo.encode('cp932')[:496].ljust(496, b'\0')
    assert len(img) == 1904
    return img


def transfer_text(img):
    lines = []
    for n in range(0, 1904, 8):
        addr = 0x0300 + n if n < 768 else 0x1B00 + n - 768
        body = '%04X' % addr + img[n:n + 8].hex().upper()
        lines.append('W' + body + '%02X' % (~sum(body.encode()) & 0xFF))
    return ''.join(l + '\r\n' for l in lines).encode('ascii')


X001, X002, X003, ALL = 256, 257, 258, 1000
Y001, Y002, EMAKE, R001, CN16, CN41 = 256, 257, 511, 768, 16, 41
SUB, RET = 28672, 28673
JMP = lambda n: 0x8000 + n - 1
CALL = lambda n: 0xC000 + n - 1
STC, TIMER, ANGLE1 = 2, 0, 4

FIXTURES = {
    'counters.gsp': image([
        step([out(CN16, 4)], [inp(CN16, 0, 3), inp(50, 0, 2)]),
        step([out(Y001, 1, TIMER, 50)], [inp(CN41, 3, 7), inp(R001, 3, 5), inp(7, 3, 2)]),
        step([out(CN16, 7)], [inp(X001, 1, 2)]),
    ], remarks={1: 'count stitches'}),
    'flow.gsp': image([
        step([out(CALL(4), 10)], [inp(X001, 1, 2)]),
        step([out(JMP(1), 3)], [inp(ALL, 0, 2)]),
        step([out(SUB, 9), out(EMAKE, 1, STC, 3)], [inp(X002, 2, 2)]),
        step([out(RET, 11)], []),
        step([out(Y002, 0, ANGLE1, 900, True), out(Y001, 1, ANGLE1, 1800, True)],
             [inp(X003, 1, 0), inp(X001, 0, 1), inp(X002, 3, 2)]),
    ], remarks={5: 'pulse, disabled'}),
    'texts.gsp': image([
        step([out(Y001, 1, TIMER, 100)], [inp(X001, 1, 2)]),
        step([out(0x1234, 5, 0xA, 7)], [inp(0x4321, 1, 2)]),
    ], remarks={1: 'needle up', 2: '\u7cf8\u5207\u308a'}, memo='First line\r\nSecond line',
       author='AUTHOR', password='K9', memo_file='NOTE1.TXT'),
    # What the editor's checks and its save refuse or pass, one file per outcome.
    'complete.gsp': image([
        step([out(Y001, 1, TIMER, 100), out(Y001, 0, TIMER, 300)], [inp(X001, 1, 0), inp(X002, 0, 2)]),
        step([out(EMAKE, 1, STC, 3)], [inp(X003, 0, 2)]),
        step([out(CN16, 4)], [inp(CN16, 0, 7), inp(20, 0, 3), inp(CN41, 0, 2)]),
        step([out(JMP(1), 3)], [inp(ALL, 0, 2)]),
    ], remarks={1: 'pulse', 5: 'only a remark'}),
    # A counter row that subtracts, whose block has no END (counter id 2: both operands
    # are numbers, carried in every input's state bits).
    'openadd.gsp': image([
        step([out(Y001, 1, STC, 5)], [inp(CN16, 2, 8), inp(20, 2, 3), inp(30, 2, 0), inp(0, 2, 0)]),
    ]),
    'unknown.gsp': image([step([out(Y001, 1, STC, 5)], [inp(0x4321, 0, 2)])]),
}

if __name__ == '__main__':
    here = os.path.dirname(os.path.abspath(__file__))
    for name, img in FIXTURES.items():
        with open(os.path.join(here, name), 'wb') as f:
            f.write(transfer_text(img))
