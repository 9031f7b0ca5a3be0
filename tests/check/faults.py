"""Shows that notifications-check finds faults: plants them into the library, the port and the dylib, one after the
other, and requires that the lines that they concern fail, and no others. Arguments choose faults by words of their
names."""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
sys.path.append(str(SOURCES / 'tests/platform/macos'))

import building  # noqa: E402
from planting import NotPlanted, planted  # noqa: E402

# `where` is what the fault is built into: 'linux' (the library and the port) or 'macos' (the dylib, run by the loader).
# `lines` are the lines that must fail, or the facts that must be other than on Linux.
Fault = namedtuple('Fault', 'fault where edits lines')

INTEGERS = ['Integer, the highest', 'Int64, the lowest', 'Int64, more than a double holds', 'Array of Integers']
DATES = ['Date, leap day', 'Date, last second before summer time', 'Date, first second of summer time',
         'Date, after summer time', 'Array of Dates']
NUMBERS = 'number_to_host.mm'
# One line for each centre.
FROM_THREADS = ['  from another thread'] * 2 + ['32 threads post 20 notifications each']

FAULTS = [
    # The library
    Fault('64-bit integers are cut to 32 bits', 'linux',
          [(NUMBERS, "REALNewVariantInteger([number longValue])", "REALNewVariantInteger((int)[number longValue])")],
          INTEGERS),
    Fault('month and day change places', 'linux',
          [('date_to_host.mm', 'constructor(result.Get(), year, month, day,',
            'constructor(result.Get(), year, day, month,')],
          DATES),
    Fault('the handler runs on the thread that posted', 'linux',
          [('NSNotificationObserver.mm', 'pthread_main_np() == 1', 'pthread_main_np() >= 0')],
          FROM_THREADS),
    Fault('an observer of one object gets those of all', 'linux',
          [('NSNotificationCenterQZL.mm', 'name:arguments.name object:arguments.object',
            'name:arguments.name object:nil')],
          ["An observer of one object gets no other's"]),
    Fault('the last byte of data is lost', 'linux',
          [('data_to_host.mm', 'static_cast<int64_t>([data length])', 'static_cast<int64_t>([data length]) - 1')],
          ['MemoryBlock', 'MemoryBlock of a MiB']),
    Fault('names of files are not decomposed', 'linux',
          [('file_names.cpp', 'CFStringNormalize(decomposed, kCFStringNormalizationFormD);', '')],
          ['Its name is decomposed']),
    Fault('an exception has another text', 'linux',
          [('notifications/members.mm', 'Object is already', 'The object is already')],
          ['Twice: NSNotificationObserverQZL', 'Twice: NSNotificationCenterQZL', 'Twice: DRNotificationCenterQZL']),
    Fault('the suspension behaviour is lost', 'linux',
          [('NSDistributedNotificationCenterQZL.mm', 'static_cast<NSNotificationSuspensionBehavior>(suspensionBehavior)',
            'static_cast<NSNotificationSuspensionBehavior>(suspensionBehavior > 0 ? 1 : 0)')],
          ['Posts while suspended: Coalesce', 'Posts while suspended: Hold',
           'Posts while suspended: DeliverImmediately', 'Coalesced posts, and an immediate one',
           'Held posts, and an immediate one']),
    # The port
    Fault('every thread is the main one', 'linux',
          [('platform/gnustep/threads.cpp', 'gettid() == getpid() ? 1 : 0', '1')],
          [*FROM_THREADS, 'pthread_main_np, main and other thread']),
    Fault('sets count as bags', 'linux',
          [('type_ids.mm', 'CFTypeID CFBagGetTypeID() { return kBag; }', 'CFTypeID CFBagGetTypeID() { return kSet; }')],
          ['Core Foundation objects of 26 types']),
    Fault('the root is a folder as any other', 'linux',
          [('file_manager.cpp', 'return fsRtDirID;', 'return fsRtDirID + 1;')],
          ['The root, of the File Manager']),
    # The dylib
    Fault('another number of methods is registered', 'macos',
          [('NSNotificationQZL.mm', 'MethodRecord("Print", Print),',
            'MethodRecord("Print", Print), MethodRecord("Print", Print),')], ['NSNotificationQZL']),
    Fault('true comes back as false', 'macos', [('conversion_steps.h', '.convert = NewTrue', '.convert = NewFalse')],
          ['Boolean true', 'Array of Booleans', 'Dictionary with nested values', 'User info, through a notification']),
    Fault('the buffer for long strings is too short', 'macos',
          [('host_strings.cpp', 'CFIndex kBytesPerUnit = CFIndex{2} * 3', 'CFIndex kBytesPerUnit = 1')],
          ['String of 100 units', 'String of 100000 units']),
]


class Workshop:
    """A copy of the sources, where faults are put in and taken out, with its builds."""

    # What a fault is built into: targets by their presets. The loader runs what is for macOS.
    BUILT = {'linux': {'linux': ['NotificationsQZL', 'notifications-check']},
             'macos': {'linux': ['macho_run'], 'macos': ['NotificationsQZL', 'notifications-check']}}

    def __init__(self, folder):
        self.sources = folder / 'sources'
        building.copy_sources(self.sources)
        for where in self.BUILT:
            self.run(['cmake', '--preset', where])
            self.build(where)

    def run(self, command):
        done = subprocess.run(command, cwd=self.sources, text=True, check=False, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0:
            raise RuntimeError(f'{" ".join(map(str, command))}:\n{done.stdout}')

    def build(self, where):
        for preset, targets in self.BUILT[where].items():
            self.run(['cmake', '--build', f'build/{preset}', '--parallel', '2', '--target', *targets])

    def faulty_lines(self, where):
        """The checks that fail and the facts that are other than on Linux."""
        program = self.sources / 'build' / where / 'notifications-check'
        runner = [] if where == 'linux' else [self.sources / 'build/linux/macho_run']
        done = subprocess.run([*runner, program, '--json'], text=True, check=False, stdout=subprocess.PIPE)
        return [line['what'] for line in json.loads(done.stdout)['lines']
                if line['came'] != line['expected'] and (line['kind'] == 'check' or line['expected'])]

    def outcome(self, fault):
        """'found' if just the lines of the fault fail, else what happened."""
        originals = {}
        try:
            for path, content in planted(fault.edits, self.sources).items():
                originals[path] = path.read_text(encoding='utf-8')
                path.write_text(content, encoding='utf-8')
            self.build(fault.where)
            lines = self.faulty_lines(fault.where)
            return 'found' if sorted(lines) == sorted(fault.lines) else f'failed: {lines}'
        except (NotPlanted, RuntimeError) as error:
            return f'{error}'
        finally:
            for path, content in originals.items():
                path.write_text(content, encoding='utf-8')


def main():
    started = time.monotonic()
    with tempfile.TemporaryDirectory() as temporary:
        workshop = Workshop(Path(temporary))
        for where in workshop.BUILT:
            if lines := workshop.faulty_lines(where):
                sys.exit(f'{where} fails without a fault: {lines}')
        chosen = [fault for fault in FAULTS if all(word in fault.fault for word in sys.argv[1:])]
        outcomes = []
        for fault in chosen:
            outcomes.append(workshop.outcome(fault))
            print(f'{fault.where:<6} {fault.fault:<50} {outcomes[-1]}', flush=True)
    found = outcomes.count('found')
    print(f'{found} of {len(outcomes)} faults found in {time.monotonic() - started:.0f} s')
    sys.exit(0 if outcomes and found == len(outcomes) else 1)


if __name__ == '__main__':
    main()
