# SPDX-License-Identifier: MIT
"""Runs sessions of test_soak one after the other or several at once, each in its own process and on its own display."""

import argparse
import concurrent.futures
import os
import pathlib
import subprocess
import sys


def options():
    parser = argparse.ArgumentParser(
        prog="scripts/window-soak",
        description="Random users of the viewer, in real windows of displays without a screen. Each session has a seed,"
        " which reproduces its user. Fails if the viewer crashes, writes to standard error, or its memory grows.",
    )
    parser.add_argument("--on", choices=["x11", "weston", "sway"], default="x11", help="the kind of display (x11)")
    parser.add_argument("--sessions", type=int, default=1, metavar="N", help="how many sessions (1)")
    parser.add_argument("--seconds", type=float, default=60, metavar="S", help="how long each of them takes (60)")
    parser.add_argument("--seed", type=int, default=1, metavar="N", help="the first seed; the others follow (1)")
    parser.add_argument("--jobs", type=int, default=1, metavar="J", help="how many run at once (1)")
    return parser.parse_args()


def run_session(chosen, seed):
    """Runs a session; returns its exit code and what it printed."""
    environment = {
        **os.environ,
        "ZELVO_SOAK_ON": chosen.on,
        "ZELVO_SOAK_SECONDS": str(chosen.seconds),
        "ZELVO_SOAK_SEED": str(seed),
    }
    done = subprocess.run(
        [sys.executable, "-B", "-m", "unittest", "test_soak"],
        cwd=pathlib.Path(__file__).parent,
        env=environment,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
    )
    return done.returncode, done.stdout


def main():
    chosen = options()
    failed = []
    with concurrent.futures.ThreadPoolExecutor(chosen.jobs) as pool:
        seeds = range(chosen.seed, chosen.seed + chosen.sessions)
        for seed, (code, text) in zip(seeds, pool.map(lambda seed: run_session(chosen, seed), seeds)):
            if code != 0:
                failed.append(seed)
            print(text if code != 0 else "\n".join(line for line in text.splitlines() if "seed" in line))
            sys.stdout.flush()
    print(f"{chosen.sessions - len(failed)} of {chosen.sessions} sessions on {chosen.on} passed", flush=True)
    if failed:
        sys.exit(f"seeds of the failed sessions: {failed}")


if __name__ == "__main__":
    main()
