"""Runs LLVM's tools and turns what they print about a Mach-O file into plain values."""
import re
import shutil
import subprocess
from collections import namedtuple

LoadCommand = namedtuple('LoadCommand', 'kind fields sections')
Bind = namedtuple('Bind', 'address library symbol weak_import')
UnwindEntry = namedtuple('UnwindEntry', 'function encoding')
Unwind = namedtuple('Unwind', 'entries lsdas personalities')
Instruction = namedtuple('Instruction', 'address callee')
CompileUnit = namedtuple('CompileUnit', 'name attributes')

FIELD = re.compile(r'\s*((?:current|compatibility) version|time stamp|\w+)\s+(.*)')


def run(tool, *arguments):
    """The standard output of llvm-`tool`; raises where the tool is missing or fails."""
    program = shutil.which(f'llvm-{tool}')
    if program is None:
        raise FileNotFoundError(f'llvm-{tool} is not installed')
    done = subprocess.run([program, *map(str, arguments)], capture_output=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f'{program} failed: {done.stderr.decode(errors="replace")}')
    return done.stdout.decode(errors='surrogateescape')


def objdump(path, *arguments):
    return run('objdump', '--macho', *arguments, path)


def mach_header(path):
    """The header's columns, `flags` as a list."""
    names, values = objdump(path, '--private-header').splitlines()[-2:]
    names, values = names.split(), values.split()
    columns = dict(zip(names, values))
    columns['flags'] = values[len(names) - 1:]
    return columns


def load_commands(path):
    """All load commands in order; fields and sections' fields are dictionaries of strings."""
    commands = []
    for line in objdump(path, '--private-headers').splitlines():
        if re.fullmatch(r'Load command \d+', line):
            commands.append(LoadCommand('', {}, []))
            fields = commands[-1].fields
        elif line == 'Section':
            commands[-1].sections.append({})
            fields = commands[-1].sections[-1]
        elif commands and (match := FIELD.fullmatch(line)):
            fields[match[1]] = match[2]
    return [LoadCommand(fields.pop('cmd'), fields, sections) for _, fields, sections in commands]


def rebases(path):
    """The addresses of the pointers that are moved with the image."""
    return {int(address, 16)
            for address in re.findall(r'^\S+ +\S+ +(0x\w+) +pointer$', objdump(path, '--rebase'), re.M)}


def binds(path):
    """What is bound at load; libraries by their short names."""
    row = re.compile(r'^\S+ +\S+ +(0x\w+) +pointer +\d+ +(\S+) +(\S+)( \(weak_import\))?$', re.M)
    return [Bind(int(address, 16), library, symbol, bool(weak))
            for address, library, symbol, weak in row.findall(objdump(path, '--bind'))]


def lazy_binds(path):
    """What is bound at the first call, as (address, library's short name, symbol)."""
    row = re.compile(r'^\S+ +\S+ +(0x\w+) +(\S+) +(\S+)$', re.M)
    return [(int(address, 16), library, symbol)
            for address, library, symbol in row.findall(objdump(path, '--lazy-bind'))]


def weak_binds(path):
    """What is bound to one definition for the whole process, as (address, symbol)."""
    row = re.compile(r'^\S+ +\S+ +(0x\w+) +pointer +\d+ +(\S+)$', re.M)
    return [(int(address, 16), symbol) for address, symbol in row.findall(objdump(path, '--weak-bind'))]


def exports(path):
    """The lines of the exports trie, flags included, as {name: address}."""
    return {name: int(address, 16)
            for address, name in re.findall(r'^(0x\w+) +(.+)$', objdump(path, '--exports-trie'), re.M)}


def defined_symbols(path):
    """All symbols of the symbol table that the file defines, debugging entries included, with their letters."""
    rows = (line.split(maxsplit=2) for line in run('nm', '-a', path).splitlines())
    return [(row[-1], row[-2]) for row in rows if len(row) == 3]


def function_starts(path):
    return [int(line, 16)
            for line in re.findall(r'^[0-9a-f]{16}$', objdump(path, '--function-starts'), re.M)]


def unwind_info(path):
    """The unwind table; language-specific data areas by function, personalities by number."""
    text = objdump(path, '--unwind-info')
    entry = r'\[\d+\]: function offset=(0x\w+), encoding(?:\[\d+\])?=(0x\w+)'
    lsda = r'\[\d+\]: function offset=(0x\w+), LSDA offset=(0x\w+)'
    personality = r'personality\[(\d+)\]: (0x\w+)'
    return Unwind([UnwindEntry(int(function, 16), int(encoding, 16))
                   for function, encoding in re.findall(entry, text)],
                  {int(function, 16): int(area, 16) for function, area in re.findall(lsda, text)},
                  {int(number): int(slot, 16) for number, slot in re.findall(personality, text)})


def dwarf_unwind_ranges(path):
    """The frame descriptions of __eh_frame as {offset: (first address, end)}."""
    row = re.compile(r'^(\w+) \w+ \w+ FDE cie=\w+ pc=(\w+)\.\.\.(\w+)$', re.M)
    return {int(offset, 16): (int(first, 16), int(end, 16))
            for offset, first, end in row.findall(run('dwarfdump', '--eh-frame', path))}


def calls(path):
    """The calls and jumps to imported functions, in the order of their addresses."""
    row = re.compile(r'^ +([0-9a-f]+):\t.*(?:##|;) symbol stub for: (\S+)$', re.M)
    return [Instruction(int(address, 16), callee)
            for address, callee in row.findall(objdump(path, '--disassemble', '--no-show-raw-insn'))]


def uuids(path):
    return re.findall(r'^UUID: (\S+) \((\S+)\)', run('dwarfdump', '--uuid', path), re.M)


def compile_units(path):
    """The compile units of a file with debugging information, with the names of their attributes."""
    text = run('dwarfdump', '--debug-info', '--recurse-depth=0', path)
    units = []
    for unit in re.split(r'DW_TAG_compile_unit', text)[1:]:
        attributes = dict(re.findall(r'^ +(DW_AT_\w+)\t\((.*)', unit, re.M))
        units.append(CompileUnit(attributes['DW_AT_name'].strip('")'), attributes))
    return units


def source_files(path):
    """The files that declarations and calls are in, as a debugger puts their names together."""
    return set(re.findall(r'DW_AT_(?:decl|call)_file\t\("(.*)"\)', run('dwarfdump', '--debug-info', path)))


def verify_debug_information(path):
    """Raises unless the debugging information is sound."""
    run('dwarfdump', '--verify', '--quiet', path)
