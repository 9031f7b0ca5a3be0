"""Shows that the tests of the dylib can fail: makes faulty dylibs, one after the other, and requires that the named
tests find each fault. Arguments choose faults by words of their names."""
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import architectures
import building
from byte_faults import BYTE_FAULTS
from dylib import Dylib
from planting import NotPlanted, planted
from source_faults import SOURCE_FAULTS


class Workshop:
    """A copy of the sources, where faults are put in and taken out, and its build folder."""

    def __init__(self, folder):
        self.sources, self.build_folder = folder / 'sources', folder / 'build'
        building.copy_sources(self.sources)
        self.tests = self.sources / 'tests/platform/macos'

    def build(self):
        """Links again in any case: the build does not watch the stubs."""
        (self.build_folder / building.DYLIB).unlink(missing_ok=True)
        shutil.rmtree(self.build_folder / f'{building.DYLIB}.dSYM', ignore_errors=True)
        return building.build(self.sources, self.build_folder)

    def run(self, dylib, *tests):
        return subprocess.run([sys.executable, '-B', '-m', 'unittest', *tests], check=False, text=True, cwd=self.tests,
                              env=os.environ | {'QZL_DYLIB': str(dylib)},
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def failure_without_a_fault(self):
        """What the tests print if they fail; None if they pass. Leaves out those that need other builds."""
        modules = sorted({path.stem for path in self.tests.glob('*_test.py')}
                         - {'package_test', 'reproducible_build_test'})
        done = self.run(self.build(), *modules)
        return done.stdout if done.returncode != 0 else None

    def outcome(self, dylib, test):
        """'found' if the test fails, else what happened."""
        done = self.run(dylib, test)
        if done.returncode == 0:
            return 'SURVIVED'
        return 'found' if '\nFAIL: ' in f'\n{done.stdout}' else f'the test broke down:\n{done.stdout}'

    def try_source_fault(self, fault):
        """The outcome for each test."""
        originals = {}
        try:
            for path, content in planted(fault.edits, self.sources).items():
                originals[path] = path.read_text(encoding='utf-8')
                path.write_text(content, encoding='utf-8')
            dylib = self.build()
            return {test: self.outcome(dylib, test) for test in fault.tests}
        except NotPlanted as error:
            return {test: f'was not planted: {error}' for test in fault.tests}
        except RuntimeError as error:
            return {test: f'was not built: {error}' for test in fault.tests}
        finally:
            for path, content in originals.items():
                path.write_text(content, encoding='utf-8')

    def try_byte_fault(self, fault, dylib):
        """The outcome for each test. The dylib itself stays as it is."""
        data = bytearray(dylib.bytes)
        fault.patch(dylib, data)
        faulty = self.build_folder / 'faulty' / building.DYLIB
        faulty.parent.mkdir(exist_ok=True)
        faulty.write_bytes(data)
        return {test: self.outcome(faulty, test) for test in fault.tests}


def chosen(faults):
    """The faults of the architecture under test that the arguments choose."""
    return [fault for fault in faults if architectures.under_test().name in fault.architectures
            and all(word in fault.fault for word in sys.argv[1:])]


def report(fault, outcomes):
    """Prints a row for each test. Returns whether all of them found the fault."""
    for test, result in outcomes.items():
        print(f'{fault:<52} {test.split(".", 1)[1]:<100} {result}', flush=True)
    return all(result == 'found' for result in outcomes.values())


def main():
    started = time.monotonic()
    with tempfile.TemporaryDirectory() as temporary:
        workshop = Workshop(Path(temporary))
        if failure := workshop.failure_without_a_fault():
            sys.exit(f'The tests fail without a fault:\n{failure}')
        print(f'{"Fault":<52} {"Test that must fail":<100} Result')
        sound = Dylib(workshop.build())
        found = [report(fault.fault, workshop.try_byte_fault(fault, sound)) for fault in chosen(BYTE_FAULTS)]
        found += [report(fault.fault, workshop.try_source_fault(fault)) for fault in chosen(SOURCE_FAULTS)]
    print(f'{sum(found)} of {len(found)} faults found in {time.monotonic() - started:.0f} s')
    sys.exit(0 if found and all(found) else 1)


if __name__ == '__main__':
    main()
