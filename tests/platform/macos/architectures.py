"""The processors that the dylib is built for, and what differs between the files for them."""
import os
from collections import namedtuple

# `preset` builds the dylib; `cpu` and `other_subtype` (a subtype of processors that the dylib is not for) stand in its
# header; `oldest_macos` is the load command with these fields. `constants` is the segment of constants that the loader
# fixes up. An unwind entry's mode is one of `modes`, `dwarf_mode` for a function with DWARF of its own.
# `slice_alignment` is the power of two at which a universal file has the dylib.
Architecture = namedtuple('Architecture', 'name preset cpu other_subtype oldest_macos constants signed modes '
                                          'dwarf_mode slice_alignment')

ARCHITECTURES = {architecture.name: architecture for architecture in (
    Architecture(name='x86_64', preset='macos', cpu='X86_64', other_subtype=8,
                 oldest_macos=('LC_VERSION_MIN_MACOSX', {'version': '10.9'}),
                 constants='__DATA', signed=False,
                 # Frame pointer, small frame, large frame
                 modes={0x01000000, 0x02000000, 0x03000000, 0x04000000}, dwarf_mode=0x04000000,
                 slice_alignment=12),
    Architecture(name='arm64', preset='macos-arm64', cpu='ARM64', other_subtype=2,
                 oldest_macos=('LC_BUILD_VERSION', {'platform': 'macos', 'minos': '11.0'}),
                 constants='__DATA_CONST', signed=True,
                 # No frame, frame
                 modes={0x02000000, 0x04000000, 0x03000000}, dwarf_mode=0x03000000,
                 slice_alignment=14),
)}


def under_test():
    """The architecture that the environment names."""
    return ARCHITECTURES[os.environ['QZL_ARCHITECTURE']]
