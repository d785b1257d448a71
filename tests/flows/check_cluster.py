#!/usr/bin/python3
"""Checks the recipes of packaging/cluster on 200 recordings: GNU parallel, the slurm script as each of its tasks would run
it, and Dask with two workers of which one is killed. Each must find every row. Prints what is wrong; exit 1 when something
is; exit 77 when a program that is needed is missing."""
import argparse
import os
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time

COUNT = 200
FAILURES = []


def check(holds, what):
    if not holds:
        FAILURES.append(what)
        print("FAILED:", what)


def make_list(kshock, folder):
    os.makedirs(f"{folder}/in")
    for seed in range(10):
        subprocess.run([kshock, "demo", f"{folder}/{seed}", "--events", "4", "--sensors", "50", "--seed", str(seed)], check=True)
    paths = [f"{folder}/in/{i}.kshock" for i in range(COUNT)]
    for i, path in enumerate(paths):
        os.link(f"{folder}/{i % 10}", path)
    with open(f"{folder}/list", "w") as file:
        file.write("\n".join(paths) + "\n")
    return paths


def check_rows(out, what):
    database = sqlite3.connect(out)
    counts = [database.execute(query).fetchone()[0] for query in (
        "SELECT count(DISTINCT path) FROM recording WHERE status = 0", "SELECT count(*) FROM recording",
        "SELECT count(*) FROM event")]
    check(counts == [COUNT, COUNT, 4 * COUNT], f"{what}: {counts}")


def check_dask(kshock, recipes, folder, paths):
    os.environ["PYTHONPATH"] = recipes
    sys.path.insert(0, recipes)
    import fleet_dask
    from distributed import Client
    os.makedirs(f"{folder}/dask")
    with Client(n_workers=2, threads_per_worker=1, dashboard_address=None, silence_logs=50) as client:
        workers = list(client.run(os.getpid).values())

        def kill_one():
            while not os.listdir(f"{folder}/dask"):
                time.sleep(0.005)
            os.kill(workers[0], signal.SIGKILL)

        killer = threading.Thread(target=kill_one)
        killer.start()
        parts = fleet_dask.collect_all(client, kshock, [], paths, f"{folder}/dask", 10)
        killer.join()
    check(len(parts) == COUNT // 10, f"{len(parts)} parts")
    subprocess.run([kshock, "fleet", "--merge", *parts, "--to", f"{folder}/dask.sqlite"], check=True, stdout=subprocess.DEVNULL)
    check_rows(f"{folder}/dask.sqlite", "Dask with a worker that was killed")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("kshock")
    parser.add_argument("recipes")
    args = parser.parse_args()
    try:
        import distributed  # noqa: F401
    except ImportError:
        return 77
    if shutil.which("parallel") is None:
        return 77
    kshock, recipes = os.path.abspath(args.kshock), os.path.abspath(args.recipes)
    environment = {**os.environ, "KSHOCK": kshock}
    with tempfile.TemporaryDirectory() as folder:
        paths = make_list(kshock, folder)
        quiet = {"check": True, "stdout": subprocess.DEVNULL, "env": environment, "cwd": folder}
        subprocess.run([f"{recipes}/fleet-parallel", "list", "parallel.sqlite", "4", "-j2"], **quiet)
        check_rows(f"{folder}/parallel.sqlite", "GNU parallel")
        for task in ("1", "2", "3", "2"):  # one runs twice, as after a requeue
            slurm = {"SLURM_ARRAY_TASK_ID": task, "SLURM_ARRAY_TASK_COUNT": "3"}
            subprocess.run([f"{recipes}/fleet.slurm", "list", "slurm.sqlite"], **{**quiet, "env": environment | slurm})
        subprocess.run([f"{recipes}/fleet.slurm", "--merge", "slurm.sqlite"], **quiet)
        check_rows(f"{folder}/slurm.sqlite", "slurm")
        check_dask(kshock, recipes, folder, paths)
    return bool(FAILURES)


if __name__ == "__main__":
    sys.exit(main())
