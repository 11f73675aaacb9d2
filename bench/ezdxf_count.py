"""The comparison with Debian's ezdxf: the same drawing read, its model-space INSERTs counted by
block name. Prints the seconds and the counts' sums for ezdxf.readfile (the whole document) and for
ezdxf's streaming iterdxf add-on (one entity at a time), and the peak memory of the process.

Usage: /usr/bin/python3 ezdxf_count.py DRAWING
"""
import collections
import resource
import sys
import time

import ezdxf
from ezdxf.addons import iterdxf


def count_streamed(path):
    counts = collections.Counter()
    for entity in iterdxf.opendxf(path).modelspace():
        if entity.dxftype() == "INSERT":
            counts[entity.dxf.name] += 1
    return counts


def count_document(path):
    doc = ezdxf.readfile(path)
    return collections.Counter(e.dxf.name for e in doc.modelspace() if e.dxftype() == "INSERT")


def main(argv):
    for label, count in (("ezdxf iterdxf", count_streamed), ("ezdxf readfile", count_document)):
        start = time.perf_counter()
        counts = count(argv[1])
        seconds = time.perf_counter() - start
        peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
        print("%s: %.1f s, %d references, %d names, peak memory so far %.0f MB"
              % (label, seconds, sum(counts.values()), len(counts), peak))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
