#!/usr/bin/env python3
"""Checks the include graph of the tree: every include of product code goes
to the same folder or to a lower layer (a test may drive a higher layer),
no folders include each other in a circle, and no units (a .h with its .cc)
include each other in a circle outside the folders allowed below. Only
test-side code (tests, their helpers, testing/, and the programs of bench/,
fuzz/ and tools/) includes testing/. Prints the folder graph with --graph.

  scripts/check-layers.py [--graph]
"""
import os
import re
import sys

# Layers from the bottom; a folder may include its own files and those of
# lower layers only. Folders on one line are peers and know nothing of
# each other.
LAYERS = [
    ["common"],
    ["source", "workbook/package", "workbook/model", "watch"],
    ["workbook/xlsx"],
    ["workbook/xls"],
    ["workbook"],
    ["workbook/reports"],
    ["charts", "summary"],
    ["driver"],
    ["shell"],
    ["app", "tools"],
    ["bench", "fuzz"],
]
# Test helpers and the instrument-file generator: allowed from test-side
# files only.
TEST_SIDE = "testing"
# Folders of programs that are not the product: benchmarks, fuzz targets and
# developer tools. Their files are test-side.
NOT_PRODUCT = ["bench", "fuzz", "tools"]
# Folders whose units may include each other in a circle, and why.
CIRCLES_ALLOWED = {
    "workbook/model": "the objects of the model navigate to their parents and children "
                      "(a sheet to its workbook, a workbook to its sheets)",
}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def is_test_side(path):
    name = os.path.basename(path)
    return (name.endswith("_test.cc") or "_test_" in name or name.startswith("test_")
            or os.path.dirname(path) in [TEST_SIDE] + NOT_PRODUCT)


def main():
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    os.chdir(root)
    rank = {folder: i for i, line in enumerate(LAYERS) for folder in line}
    files = []
    problems = []
    for folder, subfolders, names in os.walk("."):
        subfolders[:] = sorted(d for d in subfolders if not d.startswith((".", "build")))
        folder = os.path.relpath(folder)
        for name in sorted(names):
            if name.endswith((".h", ".cc")):
                if folder in rank or folder == TEST_SIDE:
                    files.append(folder + "/" + name)
                else:
                    problems.append(f"{folder}/{name}: in a folder of no layer")
    folder_edges = set()
    product_edges = {}
    unit_edges = {}
    for path in files:
        folder = os.path.dirname(path)
        with open(path, encoding="utf-8") as f:
            text = f.read()
        for included in INCLUDE.findall(text):
            if not os.path.exists(included):
                problems.append(f"{path}: includes {included}, which does not exist")
                continue
            target = os.path.dirname(included)
            if target == TEST_SIDE:
                if not is_test_side(path):
                    problems.append(f"{path}: product code includes test-side {included}")
                continue
            if target not in rank:
                problems.append(f"{path}: includes {included} from an unknown folder")
                continue
            if folder != target and folder != TEST_SIDE:
                folder_edges.add((folder, target))
                if not is_test_side(path):
                    product_edges.setdefault(folder, set()).add(target)
                if rank[target] >= rank[folder] and not path.endswith("_test.cc"):
                    problems.append(f"{path}: includes {included}, not a lower layer")
            unit = os.path.splitext(path)[0]
            unit_edges.setdefault(unit, set()).add(os.path.splitext(included)[0])
    for circle in strongly_connected(product_edges):
        problems.append("folders include each other in a circle: " + ", ".join(sorted(circle)))
    cycles = strongly_connected(unit_edges)
    notes = []
    for cycle in cycles:
        folders = {os.path.dirname(unit) for unit in cycle}
        text = " -> ".join(sorted(cycle))
        if len(folders) == 1 and next(iter(folders)) in CIRCLES_ALLOWED:
            notes.append(f"circle inside {next(iter(folders))} ({CIRCLES_ALLOWED[next(iter(folders))]}): {text}")
        else:
            problems.append("include circle: " + text)
    if "--graph" in sys.argv:
        for source, target in sorted(folder_edges):
            print(f"{source} -> {target}")
    print(f"{len(files)} files, {sum(len(v) for v in unit_edges.values())} unit includes, "
          f"{len(folder_edges)} folder arrows, {len(cycles)} circles")
    for note in notes:
        print("note: " + note)
    for problem in problems:
        print(problem)
    return 1 if problems else 0


def strongly_connected(edges):
    """Components of more than one unit (Tarjan)."""
    index, low, stack, on_stack, found = {}, {}, [], set(), []
    counter = [0]

    def visit(node):
        index[node] = low[node] = counter[0]
        counter[0] += 1
        stack.append(node)
        on_stack.add(node)
        for nxt in edges.get(node, ()):
            if nxt not in index:
                visit(nxt)
                low[node] = min(low[node], low[nxt])
            elif nxt in on_stack:
                low[node] = min(low[node], index[nxt])
        if low[node] == index[node]:
            component = []
            while True:
                top = stack.pop()
                on_stack.discard(top)
                component.append(top)
                if top == node:
                    break
            if len(component) > 1:
                found.append(component)

    sys.setrecursionlimit(10000)
    for node in list(edges):
        if node not in index:
            visit(node)
    return found


if __name__ == "__main__":
    sys.exit(main())
