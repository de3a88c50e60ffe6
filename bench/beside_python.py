"""Prints how many times longer dropping Tasks takes from Python than from C++.

    PYTHONPATH=build/release/python python3 bench/beside_python.py build/release/bench/drop_tasks [TASKS] [ROUNDS]

Both run in turn, each in a process of its own; what counts is CPU time.
"""

import statistics
import subprocess
import sys
import time


def drop(tasks):
    import quorvel

    app = quorvel.Application(answers="defaults")
    page = app.Documents.Add(quorvel.template_path()).Pages(1)
    task = app.Documents.Open(quorvel.stencil_path()).Masters("Task")
    page.Drop(task, 1, 1)
    start = time.process_time()
    for place in range(1, tasks + 1):
        page.Drop(task, 1 + place % 100 * 3, 1 + place // 100 * 3)
    print(f"{time.process_time() - start:.3f}")


def main(program, tasks="10000", rounds="3"):
    ratios = []
    for _ in range(int(rounds)):
        ours = [[program, tasks], [sys.executable, __file__, "--drop", tasks]]
        cpp, python = (float(subprocess.run(c, check=True, capture_output=True).stdout) for c in ours)
        ratios.append(python / cpp)
        print(f"C++ {cpp:.2f} s, Python {python:.2f} s: {ratios[-1]:.2f} times")
    print(f"median {statistics.median(ratios):.2f} times")


if __name__ == "__main__":
    if sys.argv[1] == "--drop":
        drop(int(sys.argv[2]))
    else:
        main(*sys.argv[1:])
