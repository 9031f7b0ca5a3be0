"""Builds the dylib from a copy of the sources."""
import os
import shutil
import subprocess
from pathlib import Path

import architectures

SOURCES = Path(__file__).resolve().parents[3]
DYLIB = 'libNotificationsQZL.dylib'
CHECK = 'notifications-check'


def copy_sources(folder):
    """Copies the repository's files to the new folder, without its history and what was built in it."""
    shutil.copytree(SOURCES, folder, symlinks=True,
                    ignore=shutil.ignore_patterns('.git', 'build', 'dist', '.cache', '__pycache__'))


def build(sources, folder, variables=None, preset=None, targets=('NotificationsQZL',)):
    """Builds what the dylib needs and returns its path; raises with the tools' output where that fails. The variables
    are added to the environment. Without a preset, takes that of the architecture under test."""
    preset = preset or architectures.under_test().preset
    environment = {name: value for name, value in os.environ.items() if name != 'ZERO_AR_DATE'} | (variables or {})
    for command in (['cmake', '--preset', preset, '-S', sources, '-B', folder],
                    ['cmake', '--build', folder, '--parallel', '2', '--target', *targets]):
        done = subprocess.run(command, cwd=sources, env=environment, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            raise RuntimeError(f'{" ".join(map(str, command))}:\n{done.stdout}')
    return Path(folder) / DYLIB


def built_dylib(architecture):
    """The architecture's dylib as its preset has built it."""
    if architecture == architectures.under_test():
        return Path(os.environ['QZL_DYLIB'])
    return SOURCES / 'build' / architecture.preset / DYLIB


def build_other_architectures():
    for architecture in architectures.ARCHITECTURES.values():
        if architecture != architectures.under_test():
            build(SOURCES, built_dylib(architecture).parent, preset=architecture.preset,
                  targets=('NotificationsQZL', CHECK))


if __name__ == '__main__':
    build_other_architectures()
