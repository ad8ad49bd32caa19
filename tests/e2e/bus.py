"""A message bus that only one test has."""

import subprocess


class Bus:
    def __init__(self):
        self.process = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.address = self.process.stdout.readline().strip()

    def send(self, signal_name):
        self.process.send_signal(signal_name)

    def end(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()
