#!/usr/bin/env python3
"""Reads a drawing with ezdxf and says what it cost: read_ezdxf.py FILE.dxf"""

import json
import resource
import sys
import time

import ezdxf


def main():
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    start = time.process_time()
    drawing = ezdxf.readfile(sys.argv[1])
    points = 0
    for entity in drawing.modelspace():
        kind = entity.dxftype()
        if kind in ("LWPOLYLINE", "POLYLINE"):
            points += len(entity)
    seconds = time.process_time() - start
    peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    print(json.dumps({"read_s": seconds, "peak_mb": peak - before, "points": points}))


if __name__ == "__main__":
    main()
