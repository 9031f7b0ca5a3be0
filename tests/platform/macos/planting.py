"""Plants faults into sources. An edit names code by its tokens: layout, comments and folders may change."""
import re


class NotPlanted(Exception):
    """An edit that does not fit the sources."""


def path_of(sources, name):
    """The one file whose path ends with the name, tests aside."""
    found = [path for path in sources.rglob(name.rpartition('/')[2])
             if path.as_posix().endswith(f'/{name}') and path.relative_to(sources).parts[0] not in ('build', 'tests')]
    if len(found) != 1:
        raise NotPlanted(f'{len(found)} files are called {name}: {found}')
    return found[0]


def pattern(text):
    """Matches the tokens of the text with any blanks and C++ comments between them."""
    return re.compile(r'(?:\s|//[^\n]*\n)*'.join(map(re.escape, re.findall(r'\w+|[^\w\s]', text))))


def planted(edits, sources):
    """The new contents of the files that the edits, (file, text, replacement), change."""
    contents = {}
    for name, text, replacement in edits:
        path = path_of(sources, name)
        before = contents.get(path) or path.read_text(encoding='utf-8')
        contents[path], places = pattern(text).subn(lambda _, new=replacement: new, before)
        if places == 0:
            raise NotPlanted(f'{name} does not contain {text!r}')
    for path, content in contents.items():
        if content == path.read_text(encoding='utf-8'):
            raise NotPlanted(f'{path.name} stays as it is')
    return contents
