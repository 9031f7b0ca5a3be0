"""Builds the dylib from a copy of the sources."""
import os
import shutil
import subprocess
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[3]
DYLIB = 'libNotificationsQZL.dylib'


def copy_sources(folder):
    """Copies the repository's files to the new folder, without its history and what was built in it."""
    shutil.copytree(SOURCES, folder, symlinks=True,
                    ignore=shutil.ignore_patterns('.git', 'build', 'dist', '.cache', '__pycache__'))


def build(sources, folder, variables=None):
    """Builds what the dylib needs and returns its path; raises with the tools' output where that fails. The variables
    are added to the environment."""
    environment = {name: value for name, value in os.environ.items() if name != 'ZERO_AR_DATE'} | (variables or {})
    for command in (['cmake', '--preset', 'macos', '-S', sources, '-B', folder],
                    ['cmake', '--build', folder, '--parallel', '2', '--target', 'NotificationsQZL']):
        done = subprocess.run(command, cwd=sources, env=environment, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            raise RuntimeError(f'{" ".join(map(str, command))}:\n{done.stdout}')
    return Path(folder) / DYLIB
