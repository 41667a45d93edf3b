"""Runs a command on a terminal of its own and prints what it shows: terminal.py COLUMNS LINES COMMAND..."""
import fcntl
import os
import struct
import subprocess
import sys
import termios

columns, lines = int(sys.argv[1]), int(sys.argv[2])
ours, theirs = os.openpty()
fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", lines, columns, 0, 0))
child = subprocess.Popen(sys.argv[3:], stdin=subprocess.DEVNULL, stdout=theirs, stderr=theirs)
os.close(theirs)
shown = b""
try:
    while part := os.read(ours, 65536):
        shown += part
except OSError:  # the other end is closed
    pass
sys.stdout.buffer.write(shown.replace(b"\r\n", b"\n").replace(b"\x1b", b"<ESC>"))
sys.exit(child.wait())
