#!/usr/bin/env python3
"""Sums up the recordings of a list on a Dask cluster.

    fleet_dask.py LIST OUT [--scheduler ADDRESS] [--files N] [--kshock PROGRAM] [--option=OPTION...]

LIST has a path a line. Without a scheduler two workers run on this machine. A task reads at least ten files and writes a
part of its own; a task whose worker dies is done again by another. The parts are merged at the end.
"""
import argparse
import os
import subprocess

RETRIES = 3
WAVE = 1000  # tasks that the scheduler knows at a time


def collect(kshock, options, paths, part):
    """Runs on a worker. kshock renames the part into its place, so doing it twice harms nothing."""
    names = b"\0".join(os.fsencode(path) for path in paths)
    subprocess.run([kshock, "fleet", "--files-from", "-", "-0", "--to", part, *options], input=names, check=True,
                   stdout=subprocess.DEVNULL)
    return part


def collect_all(client, kshock, options, paths, folder, files):
    """The parts of all paths, in waves, so that a list of any length fits the scheduler."""
    files = max(10, files)
    tasks = [(paths[at:at + files], os.path.join(folder, f"{at}.sqlite")) for at in range(0, len(paths), files)]
    parts = []
    for at in range(0, len(tasks), WAVE):
        wave = tasks[at:at + WAVE]
        futures = client.map(lambda task: collect(kshock, options, *task), wave, retries=RETRIES, pure=False)
        parts += client.gather(futures)
    return parts


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("list")
    parser.add_argument("out")
    parser.add_argument("--scheduler")
    parser.add_argument("--files", type=int, default=100, help="files of a task")
    parser.add_argument("--kshock", default="kshock")
    parser.add_argument("--option", action="append", default=[], help="of kshock fleet, such as --option=--analysis")
    args = parser.parse_args()
    from distributed import Client
    with open(args.list, "rb") as file:
        paths = [os.fsdecode(line) for line in file.read().split(b"\n") if line]
    folder = args.out + ".parts"
    os.makedirs(folder, exist_ok=True)
    where = [args.scheduler] if args.scheduler else []
    with Client(*where, **({} if where else {"n_workers": 2, "threads_per_worker": 1, "dashboard_address": None})) as client:
        parts = collect_all(client, args.kshock, args.option, paths, folder, args.files)
    subprocess.run([args.kshock, "fleet", "--merge", *parts, "--to", args.out], check=True)


if __name__ == "__main__":
    main()
