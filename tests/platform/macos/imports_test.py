"""What the dylib takes from the system's libraries: only what they export, and nothing that other C libraries
lay out or number differently."""
import csv
import re
import unittest
from pathlib import Path

import architectures
import dylib

APPLICATION_SERVICES = '/System/Library/Frameworks/ApplicationServices.framework/Versions/A/ApplicationServices'

# ApplicationServices exports these frameworks' symbols again, and is the one that may be missing.
REEXPORTED_THROUGH = {
    '/System/Library/Frameworks/CoreServices.framework/Versions/A/CoreServices': APPLICATION_SERVICES,
    '/System/Library/Frameworks/CoreText.framework/Versions/A/CoreText': APPLICATION_SERVICES,
}

# Symbols as regular expressions, and why the dylib must do without them. The headers of the cross build are
# another C library's: what they number or lay out goes wrong on macOS without a word from compiler or linker.
DENIED = [
    (r'___error|___errno_location|_errno', 'the numbers of errors differ'),
    (r'_(perror|strerror(_r)?|psignal|strsignal)', 'numbers of errors and signals differ'),
    (r'_[fl]?stat(at)?(64)?(\$INODE64)?|_fstatat.*|_stat[vf]*fs.*', 'struct stat is laid out differently'),
    (r'_f?statfs.*|_getmntinfo.*|_getattrlist.*', 'structures of file systems are laid out differently'),
    (r'_(open|openat|creat|fcntl|ioctl|access|faccessat)(\$.*)?', 'the flags differ'),
    (r'_(opendir|readdir|scandir|seekdir|telldir|glob|fts_\w+|nftw|ftw)(_r)?(\$.*)?', 'struct dirent differs'),
    (r'___(stdin|stdout|stderr)p|_(stdin|stdout|stderr)', 'the streams have other names'),
    (r'_(f|fd|fre|p)open(\$.*)?|_(fclose|pclose|fflush|setv?buf|ungetc|freopen)', 'FILE is laid out differently'),
    (r'_f(read|write|get[cs]|put[cs]|seeko?|tello?|eof|error|ileno|printf|scanf|getpos|setpos|purge)(\$.*)?',
     'FILE is laid out differently'),
    (r'_v?f(printf|scanf).*|_(getc|putc|getline|getdelim|rewind|clearerr)(_unlocked)?', 'FILE is laid out differently'),
    (r'_v?printf(\$.*)?|_puts|_putchar|___(v?f?printf)_chk', 'the library writes to no stream of the host'),
    (r'_pthread_(?!main_np$|self$).*', 'objects, initialisers and constants of threads differ'),
    (r'_sem_.*|_dispatch_.*|_os_unfair_.*', 'semaphores differ or are newer; the library takes no locks'),
    (r'__?_?(sig)?(set|long)jmp', 'jmp_buf differs, and unwinding is by exceptions'),
    (r'_(setlocale|localeconv|newlocale|uselocale|freelocale|duplocale|nl_langinfo)(_l)?', 'numbers of locales differ'),
    (r'_\w+_l', 'locale_t differs'),
    (r'__DefaultRuneLocale|__CurrentRuneLocale|___maskrune|___(to|is)\w+|___ctype_\w+|___mb_cur_max',
     'tables of character classes differ'),
    (r'_(is(alnum|alpha|ascii|blank|cntrl|digit|graph|lower|print|punct|space|upper|xdigit)|to(upper|lower|ascii))',
     'tables of character classes differ'),
    (r'_(isw|tow|wc|mb|btowc)\w+', 'wide characters and mbstate_t differ'),
    (r'_sig(action|procmask|nal|emptyset|fillset|addset|altstack|suspend|wait)|_kill|_raise',
     'numbers of signals and their structures differ'),
    (r'_(sysconf|pathconf|fpathconf|confstr|sysctl\w*|getrlimit|setrlimit|getrusage)(\$.*)?', 'the numbers differ'),
    (r'_(mmap|mprotect|madvise|msync|mlock\w*)', 'the flags differ'),
    (r'_(socket\w*|bind|connect|accept|listen|getaddrinfo|getnameinfo|[gs]etsockopt|poll|select)(\$.*)?',
     'families, options and structures of sockets differ'),
    (r'_clock(_\w+)?|_(local|gm|mk)time(_r)?(\$.*)?|_strf?time(\$.*)?|_tzset|_timezone|_nanosleep(\$.*)?',
     'clock numbers and struct tm differ'),
    (r'_dl(open|sym|close|addr|error)', 'the flags and pseudo handles differ'),
    (r'_getopt\w*|_opt(arg|ind|err|opt)|_environ|_getenv', 'the library has neither arguments nor configuration'),
    (r'_random_r|_qsort_r|_strerror_r\S*|_basename|_dirname', 'the same name has another prototype'),
    (r'__Zd[la]Pv.*m|__Zd[la]PvmSt11align_val_t', 'sized deletes are missing before macOS 10.12'),
    (r'__Z[nd]\w+St11align_val_t\w*', 'aligned allocation is missing before macOS 10.13'),
    (r'__tlv_\w+|___cxa_thread_atexit', 'the library has no variables of single threads'),
    (r'___cxa_guard_\w+', 'a lock around a static variable waits for another thread, and aborts a call that comes back in'),
    (r'___cxa_atexit|_atexit', 'nothing may run when the process ends'),
    (r'__ZNSt3__1.*', "the C++ library's own classes belong to one version of its headers"),
]

# Names that the table must deny, and names that it must not, so that a mistake in a pattern shows.
DENIED_EXAMPLES = [
    '___error', '_strerror', '_stat', '_stat$INODE64', '_fstat', '_lstat$INODE64', '_fopen', '_fclose', '_fprintf',
    '___stdoutp', '___stderrp', '_stdin', '_pthread_mutex_lock', '_pthread_once', '_setjmp', '__setjmp', '_longjmp',
    '_sigsetjmp', '_setlocale', '_strtod_l', '__DefaultRuneLocale', '___toupper', '_isalpha', '_mbrtowc', '_open',
    '_sysconf', '_mmap', '_dlsym', '__ZdlPvm', '__ZdaPvm', '__ZnwmSt11align_val_t', '__ZdlPvSt11align_val_t',
    '___cxa_guard_acquire', '___cxa_guard_release', '___cxa_guard_abort',
    '___cxa_atexit', '__ZNSt3__112basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEE6appendEPKc',
]
ALLOWED_EXAMPLES = ['_strlen', '_memcpy', '_snprintf', '_calloc', '_free', '_pthread_main_np', '__ZdlPv', '__Znam',
                    '__ZdlPvRKSt9nothrow_t', '___stack_chk_fail', '_objc_getClass', '_NSLog']


def exported_by_the_system():
    """What the system exports for the processor: {symbol: (install name, whether the definition is a weak one)}."""
    others = architectures.ARCHITECTURES.keys() - {architectures.under_test().name}
    with open(Path(__file__).with_name('symbols.tsv'), newline='', encoding='utf-8') as table:
        next(table)
        return {row[0]: (row[2], row[3:] == ['weak']) for row in csv.reader(table, delimiter='\t')
                if not others.intersection(row[3:])}


def denials(symbol):
    return [reason for pattern, reason in DENIED if re.fullmatch(pattern, symbol)]


class Imports(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()
        self.imports = self.dylib.imports
        self.system = exported_by_the_system()

    def test_are_exported_by_the_system(self):
        self.assertTrue(self.imports)
        self.assertEqual([], [row.symbol for row in self.imports if row.symbol not in self.system])

    def test_come_from_the_library_that_exports_them(self):
        for row in self.imports:
            with self.subTest(row.symbol):
                defining, _ = self.system[row.symbol]
                self.assertEqual(REEXPORTED_THROUGH.get(defining, defining), row.library)

    def test_may_be_missing_exactly_where_their_library_may(self):
        optional = {library.install_name for library in self.dylib.libraries
                    if library.load_command == 'LC_LOAD_WEAK_DYLIB'}
        self.assertTrue(optional)
        for row in self.imports:
            with self.subTest(row.symbol):
                self.assertEqual(row.library in optional, row.weak)

    def test_are_the_symbols_that_the_symbol_table_leaves_undefined(self):
        fields = self.dylib.commands('LC_DYSYMTAB')[0].fields
        symbols = {row.symbol for row in self.imports} | {'dyld_stub_binder'}
        self.assertEqual(len(symbols), int(fields['nundefsym']))

    def test_are_bound_to_one_definition_for_the_process_where_that_is_a_weak_one(self):
        weak_definitions = {row.symbol for row in self.imports if self.system[row.symbol][1]}
        self.assertEqual(weak_definitions, self.dylib.weak_binds)

    def test_hold_nothing_that_differs_between_c_libraries(self):
        self.assertEqual({}, {row.symbol: reasons for row in self.imports if (reasons := denials(row.symbol))})

    def test_denied_names_are_distinguished_from_allowed_ones(self):
        self.assertEqual([], [symbol for symbol in DENIED_EXAMPLES if not denials(symbol)])
        self.assertEqual([], [symbol for symbol in ALLOWED_EXAMPLES if denials(symbol)])
