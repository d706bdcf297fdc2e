"""What every part of the measurement uses."""
import time

now = time.monotonic_ns


class Trouble(Exception):
    """Why something could not be measured, in words for whoever asked for it."""


def read_file(path):
    with open(path, "rb") as file:
        return file.read()
