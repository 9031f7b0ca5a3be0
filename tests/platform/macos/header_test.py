"""What kind of file the dylib is and how it names itself."""
import unittest

import architectures
import dylib

FLAGS = {
    'NOUNDEFS',             # everything was found when it was linked
    'DYLDLINK',
    'TWOLEVEL',             # each import names its library
    'NO_REEXPORTED_DYLIBS',
}
POSSIBLE_FLAGS = FLAGS | {
    'BINDS_TO_WEAK',        # imports definitions that the process holds once, such as operator new
}


class Header(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()

    def test_is_a_64_bit_dylib_for_every_model_of_the_processor(self):
        header = self.dylib.header
        self.assertEqual(('MH_MAGIC_64', architectures.under_test().cpu, 'ALL', 'DYLIB'),
                         tuple(header[name] for name in ('magic', 'cputype', 'cpusubtype', 'filetype')))

    def test_flags_are_those_of_a_two_level_library_that_reexports_nothing(self):
        flags = set(self.dylib.header['flags'])
        self.assertLessEqual(FLAGS, flags)
        self.assertLessEqual(flags, POSSIBLE_FLAGS)

    def test_runs_from_the_oldest_macos_for_the_processor_on(self):
        kind, fields = architectures.under_test().oldest_macos
        commands = self.dylib.commands('LC_VERSION_MIN_MACOSX', 'LC_BUILD_VERSION')
        self.assertEqual([kind], [command.kind for command in commands])
        self.assertEqual(fields, {name: commands[0].fields[name] for name in fields})

    def test_is_found_through_the_run_path_of_what_loads_it(self):
        self.assertEqual('@rpath/libNotificationsQZL.dylib', self.dylib.install_name)

    def test_has_no_run_paths_of_its_own(self):
        self.assertEqual([], self.dylib.commands('LC_RPATH'))
