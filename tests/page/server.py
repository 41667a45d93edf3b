"""A server of the program on a copy of a database, for tests."""
import os
import pathlib
import re
import shutil
import subprocess


class Server:
    def __init__(self, program, database, folder, name="page", language="en", port=0, options=()):
        self.program, self.language, self.port = program, language, port
        self.database = os.path.join(folder, f"{name}.db")
        # A log that an earlier run left behind is none of this file's.
        for ending in ("-wal", "-shm"):
            pathlib.Path(self.database + ending).unlink(missing_ok=True)
        shutil.copy(database, self.database)
        self.log = open(os.path.join(folder, f"{name}.log"), "ab")
        self.start(*options)

    def start(self, *options):
        """@return the address with its token; the port stays the same from the first start on."""
        self.process = subprocess.Popen(
            [self.program, "serve", "-d", self.database, "--port", str(self.port), "--lang", self.language, *options],
            stdout=subprocess.PIPE, stderr=self.log, text=True)
        line = self.process.stdout.readline()
        self.address = re.search(r"http://\S+", line).group()
        self.port = int(re.search(r":(\d+)/", self.address).group(1))
        return self.address

    @property
    def root(self):
        return f"http://127.0.0.1:{self.port}/"

    def stop(self):
        """As an accident ends it: what was acknowledged is there afterwards."""
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def run(self, *words):
        """Another run of the program on the same database."""
        done = subprocess.run([self.program, *words, "-d", self.database], capture_output=True, text=True, check=True)
        return done.stdout
