"""Installs an update with an installed or built program where it is: update.py PROGRAM NAME PASSWORD PICTURES_DIR
(as root). The program runs as the account NAME, which authenticates as itself."""
import sys
import tempfile
from pathlib import Path
from types import SimpleNamespace

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from desktop.demo import demonstrate


def main(program, name, password, pictures):
    with tempfile.TemporaryDirectory() as folder:
        start = Path(folder, "bin", "start")  # a desktop session copies this folder
        start.parent.mkdir()
        start.write_text(f'#!/bin/sh\nexec "{program}"\n')
        demonstrate(start, SimpleNamespace(name=name, password=password), pictures)


if __name__ == "__main__":
    main(*sys.argv[1:])
