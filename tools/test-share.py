#!/usr/bin/env python3
"""The tests' share of the code: C++ lines under tests/ and fuzz/ against those under
src/, blank lines and lines holding only a comment left out. The oracle, the fuzz
targets and the test support count as tests. Prints one line; the test command ends
with it.
    tools/test-share.py [repository folder]
"""
import os
import sys

CPP = (".cpp", ".h", ".hpp", ".cc")


def code_lines(path):
    count, in_block = 0, False
    with open(path, encoding="utf-8", errors="replace") as f:
        for line in f:
            s = line.strip()
            if in_block:
                if "*/" not in s:
                    continue
                in_block, s = False, s.split("*/", 1)[1].strip()
            if not s or s.startswith("//"):
                continue
            if s.startswith("/*"):
                rest = s.split("*/", 1)[1].strip() if "*/" in s else None
                if rest is None:
                    in_block = True
                if not rest or rest.startswith("//"):
                    continue
            count += 1
    return count


def tree(root):
    return sum(code_lines(os.path.join(d, f)) for d, _, files in os.walk(root) for f in files if f.endswith(CPP))


def main():
    top = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    code = tree(os.path.join(top, "src"))
    tests = tree(os.path.join(top, "tests")) + tree(os.path.join(top, "fuzz"))
    print("pemlo: tests are %d lines against %d lines of code: %.1f %% (non-blank, non-comment C++; "
          "tests/ and fuzz/ against src/)" % (tests, code, 100.0 * tests / code))


if __name__ == "__main__":
    main()
