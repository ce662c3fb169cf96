#!/usr/bin/env python3
"""Converts a country by a cluster of one computer, with a task that is killed, and again.

slurm_test.py PROGRAMS SHARE
"""

from __future__ import annotations

import getpass
import os
import pathlib
import socket
import subprocess
import tempfile
import unittest

from fleet import KILLED, PARTS, SHARE, FleetTest, need, need_programs, wait_until

need_programs("the packages slurmctld, slurmd, slurm-client and munge",
              "slurmctld", "slurmd", "sbatch", "munged")
if os.geteuid() != 0:
    need("slurmd starts jobs as root only.")


def free_ports(count: int) -> list[int]:
    """Ports of this computer that nobody uses."""
    sockets = [socket.socket() for _ in range(count)]
    for one in sockets:
        one.bind(("127.0.0.1", 0))
    ports = [int(one.getsockname()[1]) for one in sockets]
    for one in sockets:
        one.close()
    return ports


class Cluster:
    """A controller and a node on loopback, with a key of their own. Ended by their process ids."""

    def __init__(self, folder: pathlib.Path) -> None:
        self.folder = folder
        self.processes: list[subprocess.Popen[bytes]] = []
        for name in ("munge", "state", "spool"):
            (folder / name).mkdir(mode=0o700)
        folder.chmod(0o755)
        self.conf = folder / "slurm.conf"
        self.conf.write_text(self.settings())

    def settings(self) -> str:
        """What stands in slurm.conf."""
        host, user, (controller, node) = socket.gethostname(), getpass.getuser(), free_ports(2)
        return f"""ClusterName=here
SlurmctldHost={host}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={self.folder}/munge.sock
CredType=cred/munge
CommunicationParameters=NoCtldInAddrAny,NoInAddrAny
SlurmctldPort={controller}
SlurmdPort={node}
StateSaveLocation={self.folder}/state
SlurmdSpoolDir={self.folder}/spool
SlurmctldPidFile={self.folder}/slurmctld.pid
SlurmdPidFile={self.folder}/slurmd.pid
SlurmctldLogFile={self.folder}/slurmctld.log
SlurmdLogFile={self.folder}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
MpiDefault=none
SwitchType=switch/none
SchedulerParameters=batch_sched_delay=0
ReturnToService=2
SlurmdParameters=config_overrides
NodeName=n1 NodeHostname={host} NodeAddr=127.0.0.1 CPUs=2 State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""

    def begin(self, *command: object) -> None:
        """Starts a process that goes on."""
        with open(self.folder / "processes.log", "ab") as log:
            self.processes.append(subprocess.Popen([str(word) for word in command], stdout=log, stderr=log))

    def start(self) -> None:
        """Starts everything, and waits until jobs can come."""
        (self.folder / "munge/key").write_bytes(os.urandom(128))
        (self.folder / "munge/key").chmod(0o600)
        where = self.folder / "munge"
        sock = self.folder / "munge.sock"
        self.begin("munged", "--foreground", "--force", f"--key-file={where}/key", f"--socket={sock}",
                   f"--pid-file={where}/pid", f"--log-file={where}/log", f"--seed-file={where}/seed")
        wait_until(sock.exists, "munged")
        os.environ["SLURM_CONF"] = str(self.conf)
        self.begin("slurmctld", "-D")
        self.begin("slurmd", "-D", "-N", "n1")
        wait_until(lambda: self.said("sinfo", "--noheader", "--format=%t") == "idle", "a node that is idle")

    @staticmethod
    def said(*command: str) -> str:
        """What a command says."""
        return subprocess.run(command, text=True, capture_output=True).stdout.strip()

    def stop(self) -> None:
        """Ends what was started, the last first."""
        self.said("scancel", "--quiet", f"--user={getpass.getuser()}")
        for process in reversed(self.processes):
            process.terminate()
        for process in self.processes:
            process.wait()


class SlurmTest(FleetTest):
    def setUp(self) -> None:
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.cluster = Cluster(pathlib.Path(folder.name))
        self.addCleanup(self.cluster.stop)
        self.cluster.start()

    def send(self, words: list[str], **settings: object) -> str:
        """Sends a batch file with what stands before and behind it. @return the number of the job"""
        environment = os.environ | {name: str(value) for name, value in settings.items()}
        run = subprocess.run(["sbatch", "--parsable", f"--chdir={self.folder}", *words], text=True,
                             capture_output=True, env=environment)
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout.strip()

    def convert(self, program: object) -> str:
        """Sends all parts. @return the number of the job"""
        return self.send([f"--array=0-{PARTS - 1}", f"{SHARE}/slurm/convert.sbatch", "--tileset"],
                         ROOT=self.land, OUT=self.out, PARTS=PARTS, PROGRAM=program)

    def wait_for(self, job: str) -> None:
        """Waits until a job is over."""
        wait_until(lambda: self.cluster.said("squeue", "--noheader", f"--jobs={job}") == "",
                   f"the end of {job}")

    def test_a_killed_task_is_done_by_the_same_lines(self) -> None:
        program = self.write_program_that_is_caught("wait $program")
        job = self.convert(program)
        wait_until((self.folder / "caught").exists, "a task in the middle of its part")
        self.cluster.said("scancel", "--signal=KILL", "--full", f"{job}_{KILLED}")
        self.wait_for(job)
        merged = subprocess.run(["fltreport", *map(str, map(self.report_of, range(PARTS)))], text=True,
                                capture_output=True)
        self.assertIn(f"part {KILLED}/{PARTS}: ", merged.stdout)
        job = self.convert(program)
        merge = self.send([f"--dependency=afterany:{job}", f"{SHARE}/slurm/merge.sbatch"], OUT=self.out)
        self.wait_for(merge)
        self.assertTrue((self.out / "report.html").exists())
        self.assert_whole()


if __name__ == "__main__":
    unittest.main(argv=[__file__])
