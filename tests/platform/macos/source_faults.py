"""Faults in the sources or the build of the dylib, and the tests that must find each."""
from collections import namedtuple

import architectures
import building
from planting import path_of

# `edits` are (file, text, replacement), as planting.py takes them. Each of the tests must fail. The fault is one on the
# named architectures.
SourceFault = namedtuple('SourceFault', 'fault edits tests architectures')


def mutation(fault, edits, *tests, on=architectures.ARCHITECTURES):
    return SourceFault(fault, edits, tests, on)


LINKING = 'platform/macos/CMakeLists.txt'
OLDEST_MACOS = 'cross_build.cmake'
CORE_FOUNDATION = 'CoreFoundation.framework/Versions/A/CoreFoundation.tbd'
FOUNDATION = 'Foundation.framework/Versions/C/Foundation.tbd'
LIB_SYSTEM = 'libSystem.B.tbd'
LIB_OBJC = 'libobjc.A.tbd'
LIB_CPLUSPLUS = 'libc++.1.tbd'
OBSERVER = 'NSNotificationObserver.h'
OBSERVER_CODE = 'NSNotificationObserver.mm'
OBSERVER_RECORD = 'NSNotificationObserverQZL.mm'
OBSERVER_EVENT = 'observer_event.mm'
NOTIFICATION_RECORD = 'NSNotificationQZL.mm'
CENTER_RECORD = 'NSNotificationCenterQZL.mm'
DISTRIBUTED_RECORD = 'NSDistributedNotificationCenterQZL.mm'
DISC_RECORDING_RECORD = 'DRNotificationCenterQZL.mm'
RECORDS = 'class_records.h'
MEMBERS = 'notifications/members.h'
PLUGIN = 'plugin.cpp'
LIBRARY = 'Library.cmake'

ENTRY_POINT = 'void REALPluginMain('
FIRST_STATEMENT = 'gResolver = resolver;'


def at_start(declarations, statement):
    """Edits that make the entry point run one more statement."""
    return [(PLUGIN, ENTRY_POINT, f'{declarations}\n{ENTRY_POINT}'),
            (PLUGIN, FIRST_STATEMENT, FIRST_STATEMENT + statement)]


def compiled(source, options):
    """An edit that compiles one of the library's sources with additional options."""
    library = 'add_library(NotificationsQZL SHARED)'
    path = path_of(building.SOURCES, source).relative_to(building.SOURCES)
    return LIBRARY, library, f'set_source_files_properties({path} PROPERTIES COMPILE_OPTIONS "{options}")\n{library}'


SOURCE_FAULTS = [
    # Header and load commands
    mutation('needs a later macOS',
             [(OLDEST_MACOS, 'x86_64 10.9', 'x86_64 10.11'), (OLDEST_MACOS, 'arm64 11.0', 'arm64 11.1')],
             'header_test.Header.test_runs_from_the_oldest_macos_for_the_processor_on'),
    mutation('another install name', [(LINKING, 'INSTALL_NAME_DIR @rpath', 'INSTALL_NAME_DIR @loader_path')],
             'header_test.Header.test_is_found_through_the_run_path_of_what_loads_it'),
    mutation('a run path', [(LINKING, '-lSystem)', '-lSystem LINKER:-rpath,/usr/local/lib)')],
             'header_test.Header.test_has_no_run_paths_of_its_own'),
    mutation('a flat namespace', [(LINKING, '-lSystem)', '-lSystem LINKER:-flat_namespace)')],
             'header_test.Header.test_flags_are_those_of_a_two_level_library_that_reexports_nothing'),
    mutation('a stub with a wrong install name',
             [(CORE_FOUNDATION, "install-name:    '/System/Library/Frameworks/CoreFoundation.framework/Versions/A",
               "install-name:    '/System/Library/Frameworks/CoreFoundation.framework/Versions/B")],
             'libraries_test.Libraries.test_are_these_and_no_others'),
    mutation('one library more', [(LINKING, 'LINKER:-no_implicit_dylibs\n', '')],
             'libraries_test.Libraries.test_are_these_and_no_others'),
    mutation('a missing weak flag', [(LINKING, '-weak_framework,InstantMessage', '-framework,InstantMessage')],
             'libraries_test.Libraries.test_are_optional_where_the_library_must_load_without_them'),
    mutation('a weak flag too many', [(LINKING, '-framework,AppKit', '-weak_framework,AppKit')],
             'libraries_test.Libraries.test_are_optional_where_the_library_must_load_without_them'),
    mutation('a raised compatibility version',
             [(FOUNDATION, 'compatibility-version: 300', 'compatibility-version: 300.1')],
             'libraries_test.Libraries.test_ask_for_no_compatibility_version_above_that_of_macos_10_9'),
    # Symbols
    mutation('an added export',
             [(LINKING, '-exported_symbol,_REALPluginMain', '-exported_symbol,_REALPlugin*'),
              (PLUGIN, ENTRY_POINT, 'extern "C" __attribute__((visibility("default"))) void REALPluginStop();\n'
                                    f'void REALPluginStop() {{}}\n{ENTRY_POINT}')],
             'exports_test.Exports.test_hold_the_entry_point_alone',
             'exports_test.Exports.test_symbol_table_defines_nothing_else'),
    mutation('an entry point that is not exported',
             [(LINKING, '-exported_symbol,_REALPluginMain', '-exported_symbol,_gResolver')],
             'exports_test.Exports.test_hold_the_entry_point_alone'),
    mutation('local symbols left in', [(LINKING, 'COMMAND ${strip} -x $<TARGET_FILE:${target}>\n', '')],
             'exports_test.Exports.test_symbol_table_has_no_local_entries',
             'exports_test.Exports.test_symbol_table_defines_nothing_else'),
    mutation('no debugging companion',
             [(LINKING, 'COMMAND ${dsymutil} $<TARGET_FILE:${target}> -o $<TARGET_FILE:${target}>.dSYM\n', '')],
             'debug_companion_test.DebugCompanion.test_belongs_to_this_very_dylib'),
    mutation('a debugging companion without one of the sources',
             [compiled('errors.cpp', '-g0')],
             'debug_companion_test.DebugCompanion.test_describes_every_source_file'),
    mutation('debugging information with paths that lead nowhere',
             [(LINKING, '-ffile-prefix-map=${PROJECT_BINARY_DIR}=.', '-ffile-prefix-map=${PROJECT_BINARY_DIR}=build')],
             'debug_companion_test.DebugCompanion.test_names_the_files_of_the_project_from_its_root'),
    # Imports
    mutation("another C library's error number",
             [(LIB_SYSTEM, '_abort,', '_abort, ___error,')]
             + at_start('extern "C" int *__error();', ' *__error() = 0;'),
             'imports_test.Imports.test_hold_nothing_that_differs_between_c_libraries'),
    mutation('a stream of the C library',
             [(LIB_SYSTEM, '_abort,', '_abort, ___stderrp,')]
             + at_start('extern "C" void *__stderrp;\nvoid *volatile gStream;', ' gStream = __stderrp;'),
             'imports_test.Imports.test_hold_nothing_that_differs_between_c_libraries'),
    mutation('a sized delete',
             [(LIB_CPLUSPLUS, '__ZdlPv,', '__ZdlPv, __ZdlPvm,'),
              (LINKING, '-fno-sized-deallocation', '-fsized-deallocation')]
             + at_start('#include <cstddef>\nvoid *volatile gLeft;',
                        ' ::operator delete(gLeft, static_cast<std::size_t>(8));'),
             'imports_test.Imports.test_hold_nothing_that_differs_between_c_libraries'),
    mutation('a static variable that is initialised under a lock',
             at_start('', ' static void *const version = resolver("REALGetRBVersion"); if (!version) return;'),
             'imports_test.Imports.test_hold_nothing_that_differs_between_c_libraries'),
    mutation('a function that macOS lacks',
             [(LIB_SYSTEM, '_abort,', '_abort, _secure_getenv,')]
             + at_start('extern "C" char *secure_getenv(const char *);', ' secure_getenv("PATH");'),
             'imports_test.Imports.test_are_exported_by_the_system'),
    mutation('a function that macOS has for another processor',
             [(LIB_OBJC, ' _objc_msgSend_stret,', ' _objc_msgSend_stret, _objc_msgSend_fpret,')]
             + at_start('extern "C" void objc_msgSend_fpret();', ' objc_msgSend_fpret();'),
             'imports_test.Imports.test_are_exported_by_the_system', on=['arm64']),
    mutation('a function bound to the wrong library',
             [(LIB_SYSTEM, ' _strlen,', ''), (LIB_OBJC, '_sel_registerName', '_sel_registerName, _strlen')],
             'imports_test.Imports.test_come_from_the_library_that_exports_them'),
    mutation('the root class bound as before macOS 10.8', [(CORE_FOUNDATION, 'NSNull,', 'NSNull, NSObject,')],
             'imports_test.Imports.test_come_from_the_library_that_exports_them'),
    mutation('a weak import from a library that is always there',
             [('CFBase.h', 'CF_EXPORT CFTypeRef CFRetain(CFTypeRef object)',
               'CF_EXPORT __attribute__((weak_import)) CFTypeRef CFRetain(CFTypeRef object)')],
             'imports_test.Imports.test_may_be_missing_exactly_where_their_library_may'),
    mutation('a weak definition taken for an ordinary one',
             [(LIB_CPLUSPLUS, ' __ZTISt12out_of_range,', ''),
              (LIB_CPLUSPLUS, '___dynamic_cast', '___dynamic_cast, __ZTISt12out_of_range')],
             'imports_test.Imports.test_are_bound_to_one_definition_for_the_process_where_that_is_a_weak_one'),
    # The Cocoa class
    mutation('a class with another name',
             [(OBSERVER, '@interface', '__attribute__((objc_runtime_name("NSNotificationWatcher")))\n@interface')],
             'observer_class_test.ObserverClass.test_is_the_only_class'),
    mutation('a second class',
             [(OBSERVER_CODE, '\n@end', '\n@end\n@interface Other : NSObject\n@end\n@implementation Other\n@end\n')],
             'observer_class_test.ObserverClass.test_is_the_only_class'),
    mutation('another superclass', [(OBSERVER, 'Observer : NSObject', 'Observer : NSNotification')],
             'observer_class_test.ObserverClass.test_derives_from_nsobject'),
    mutation('a changed method encoding',
             [(OBSERVER, 'initWithTarget:(REALobjectStruct *)', 'initWithTarget:(void *)'),
              (OBSERVER_CODE, 'initWithTarget:(REALobjectStruct *)', 'initWithTarget:(void *)'),
              (OBSERVER_CODE, 'target = instance', 'target = static_cast<REALobjectStruct *>(instance)')],
             'observer_class_test.ObserverClass.test_has_four_methods_in_order_with_their_encodings'),
    mutation('a structure whose fields are known', [(OBSERVER, '@interface', 'struct _NSZone { int a; };\n@interface')],
             'observer_class_test.ObserverClass.test_has_four_methods_in_order_with_their_encodings'),
    mutation('a wrong type of the instance variable', [(OBSERVER, 'REALobjectStruct *target;', 'id target;'),
                                                       (OBSERVER_CODE, 'target = instance', 'target = (id)instance'),
                                                       (OBSERVER_CODE, 'RaiseGotNotification(target',
                                                        'RaiseGotNotification((REALobjectStruct *)target')],
             'observer_class_test.ObserverClass.test_has_one_instance_variable'),
    mutation('a second instance variable', [(OBSERVER, '*target;', '*target; int posts;')],
             'observer_class_test.ObserverClass.test_instances_hold_the_variable_alone'),
    mutation('a class method', [(OBSERVER_CODE, '\n@end', '\n+ (id)observer { return nil; }\n@end')],
             'observer_class_test.ObserverClass.test_has_no_class_methods'),
    mutation('a property', [(OBSERVER, '*target;\n}', '*target;\n}\n@property(assign) id owner;'),
                            (OBSERVER_CODE, '\n@end', '\n@dynamic owner;\n@end')],
             'observer_class_test.ObserverClass.test_adopts_no_protocols_and_declares_no_properties'),
    mutation('a protocol', [(OBSERVER, '@interface NSNotificationObserver : NSObject',
                             '@protocol Posts @end\n@interface NSNotificationObserver : NSObject <Posts>')],
             'observer_class_test.ObserverClass.test_adopts_no_protocols_and_declares_no_properties'),
    mutation('a category', [(OBSERVER_CODE, '\n@end', '\n@end\n@implementation NSObject (QZL)\n- (id)host '
                                                       '{ return nil; }\n@end\n')],
             'observer_class_test.ObserverClass.test_dylib_has_no_categories_protocols_or_load_methods'),
    mutation('a method run at load', [(OBSERVER_CODE, '\n@end', '\n+ (void)load {}\n@end')],
             'observer_class_test.ObserverClass.test_dylib_has_no_categories_protocols_or_load_methods'),
    # The class records
    mutation("the class records' flags", [(RECORDS, 'kClassFlags = 4', 'kClassFlags = 5')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots'),
    mutation("the class records' version", [(RECORDS, 'version = kLatestRecordVersion', 'version = 12')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots'),
    mutation('instance data of another size',
             [(DISC_RECORDING_RECORD, '.dataSize = sizeof(WrapperData)', '.dataSize = 16')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots'),
    mutation('hooks where they are inherited',
             [(DISTRIBUTED_RECORD, '    .methods = gMethods', '    .constructor = WrapperConstructorHook,\n'
                                                              '    .methods = gMethods')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots'),
    mutation('a member left out of the count',
             [(RECORDS, 'count(Count)', 'count(Count - 1)')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots'),
    mutation('more members counted than there are',
             [(RECORDS, 'count(Count)', 'count(Count + 9)')],
             'class_records_test.ClassRecords.test_hold_the_class_in_thirty_slots',
             'class_records_test.ClassRecords.test_lie_apart_from_each_other_and_from_their_tables'),
    mutation('one hook for birth and death',
             [(DISC_RECORDING_RECORD, '.destructor = WrapperDestructorHook', '.destructor = WrapperConstructorHook')],
             'class_records_test.ClassRecords.test_name_different_hooks_for_birth_and_death'),
    mutation('one constructor for two declarations',
             [(NOTIFICATION_RECORD, '"Constructor(handle as integer)", ConstructorWithHandle',
               '"Constructor(handle as integer)", Constructor'),
              (NOTIFICATION_RECORD, 'void ConstructorWithHandle', '[[maybe_unused]] void ConstructorWithHandle')],
             'class_records_test.ClassRecords.test_name_the_constructor_of_each_class_itself',
             'class_records_test.ClassRecords.test_name_a_function_of_its_own_for_each_member'),
    mutation("a member record's flag", [(RECORDS, 'flags = kMethodFlags', 'flags = kMethodFlags + 1')],
             'class_records_test.ClassRecords.test_list_the_methods_in_order'),
    mutation('two members swapped',
             [(OBSERVER_RECORD, '"Constructor", Constructor', '"?", Destructor'),
              (OBSERVER_RECORD, '"Destructor", Destructor', '"Constructor", Constructor'),
              (OBSERVER_RECORD, '"?"', '"Destructor"')],
             'class_records_test.ClassRecords.test_list_the_methods_in_order'),
    mutation('a computed property that cannot be written',
             [(DISTRIBUTED_RECORD, 'ComputedPropertyRecord("suspended as boolean", suspended, setSuspended)',
               'MethodRecord("suspended as boolean", suspended)'),
              (DISTRIBUTED_RECORD, 'void setSuspended', '[[maybe_unused]] void setSuspended')],
             'class_records_test.ClassRecords.test_list_the_methods_in_order'),
    mutation("a space in a member's declaration",
             [(DISC_RECORDING_RECORD, 'name as string=\\"\\"', 'name as string = \\"\\"')],
             'class_records_test.ClassRecords.test_list_the_methods_in_order'),
    mutation('two members with one function',
             [(DISC_RECORDING_RECORD, '        addObserver)', '        removeObserver)'),
              (DISC_RECORDING_RECORD, 'void addObserver', '[[maybe_unused]] void addObserver')],
             'class_records_test.ClassRecords.test_name_a_function_of_its_own_for_each_member'),
    mutation('a property of another type', [(NOTIFICATION_RECORD, '"Variant", objectVariant', '"Object", objectVariant')],
             'class_records_test.ClassRecords.test_list_the_properties_in_order'),
    mutation('a handle that the host cannot write', [(MEMBERS, '    .setter = {.field = kFieldAccess},\n', '')],
             'class_records_test.ClassRecords.test_list_the_properties_in_order'),
    mutation('an event that is misspelt', [(OBSERVER_EVENT, '"GotNotification(', '"gotNotification(')],
             'class_records_test.ClassRecords.test_list_the_events_with_their_keys_unset'),
    mutation('two constants swapped',
             [(DISTRIBUTED_RECORD, 'BehaviorDrop = 1', '?'),
              (DISTRIBUTED_RECORD, 'BehaviorCoalesce = 2', 'BehaviorDrop = 1'),
              (DISTRIBUTED_RECORD, '?"', 'BehaviorCoalesce = 2"')],
             'class_records_test.ClassRecords.test_list_the_constants_in_order'),
    mutation('a shared method without its type',
             [(CENTER_RECORD, '"defaultCenter as NSNotificationCenterQZL"', '"defaultCenter"')],
             'class_records_test.ClassRecords.test_list_the_shared_methods_in_order'),
    mutation('a table off the boundary',
             [(OBSERVER_RECORD, 'alignas(kRecordAlignment) REALpropertyRecord gProperties[] = {',
               'struct { uint64_t before; REALpropertyRecord properties[1]; } gShifted = {0, {'),
              (OBSERVER_RECORD, '    kHandleProperty,\n};',
               '    kHandleProperty,\n}};\nauto &gProperties = gShifted.properties;')],
             'class_records_test.ClassRecords.test_begin_on_16_byte_boundaries_as_do_their_tables'),
    mutation('an event record in constant memory',
             [(OBSERVER_EVENT, 'REALeventRecord gObserverEvents',
               '__attribute__((section("__DATA,__const"))) REALeventRecord gObserverEvents')],
             'class_records_test.ClassRecords.test_can_be_written_by_the_host_and_the_library'),
    # Code and memory
    mutation('functions that exceptions cannot pass',
             [compiled('plugin.cpp', '-fno-exceptions;-fno-asynchronous-unwind-tables;-fno-unwind-tables')],
             'unwinding_test.Unwinding.test_is_described_for_every_function'),
    mutation('a cleanup without its personality',
             at_start('extern "C" void _Unwind_Resume(void *);', ' if (!resolver) _Unwind_Resume(nullptr);'),
             'unwinding_test.Unwinding.test_functions_with_handlers_or_cleanups_have_the_personality_for_them'),
    mutation('code that nothing reaches', [(LINKING, 'LINKER:-dead_strip\n', '')],
             'unwinding_test.Unwinding.test_dwarf_is_there_only_for_functions', on=['x86_64']),
    mutation('data that can be executed', [(LINKING, '-lSystem)', '-lSystem LINKER:-segprot,__DATA,rwx,rwx)')],
             'memory_test.Memory.test_no_segment_is_both_writable_and_executable'),
    mutation('code that can be written', [(LINKING, '-lSystem)', '-lSystem LINKER:-segprot,__TEXT,rwx,rwx)')],
             'memory_test.Memory.test_code_and_constants_are_read_only'),
    mutation('a static initialiser',
             [(LIBRARY, '-Wglobal-constructors', '-Wno-global-constructors')]
             + at_start('static double (*volatile gClock)();\nstatic double Now() { return gClock ? gClock() : 0; }\n'
                        'volatile double gLoaded = Now();', ''),
             'memory_test.Memory.test_no_code_runs_at_load_or_unload'),
    mutation('no signature', [(LINKING, '-lSystem)', '-lSystem LINKER:-no_adhoc_codesign)')],
             'signature_test.Signature.test_is_there_where_the_processor_asks_for_it', on=['arm64']),
    # What the file reveals
    mutation("a source file's name in the code", [(NOTIFICATION_RECORD, 'NSLog(@"', 'NSLog(@__FILE__ "')],
             'anonymity_test.Anonymity.test_no_source_file_is_named'),
    mutation("the source folder's name in the code",
             [(LINKING, '  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.\n', ''),
              (NOTIFICATION_RECORD, 'NSLog(@"', 'NSLog(@__FILE__ "')],
             'anonymity_test.Anonymity.test_neither_folders_nor_user_are_named'),
    mutation('an absolute path', [(LINKING, '-lSystem)', '-lSystem LINKER:-rpath,/opt/local/lib)')],
             'anonymity_test.Anonymity.test_the_only_absolute_paths_are_the_libraries_install_names'),
    mutation('debugging information with the source folder',
             [(LINKING, '  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.\n', '')],
             'reproducible_build_test.ReproducibleBuild.'
             'test_gives_the_same_bytes_in_another_folder_and_from_another_copy'),
    mutation('symbols with the build folder', [(LINKING, '    LINKER:-oso_prefix,${PROJECT_BINARY_DIR}/\n', '')],
             'reproducible_build_test.ReproducibleBuild.'
             'test_gives_the_same_bytes_in_another_folder_and_from_another_copy'),
    mutation('headers of the environment', [(LINKING, '--unset=CPATH --unset=CPLUS_INCLUDE_PATH', '')],
             'reproducible_build_test.ReproducibleBuild.'
             'test_takes_neither_headers_nor_libraries_from_the_environment'),
    mutation('libraries of the environment', [(LINKING, '--unset=LIBRARY_PATH', '')],
             'reproducible_build_test.ReproducibleBuild.'
             'test_takes_neither_headers_nor_libraries_from_the_environment'),
    mutation('the time of day in the code', [(NOTIFICATION_RECORD, 'NSLog(@"', 'NSLog(@__TIME__ "')],
             'reproducible_build_test.ReproducibleBuild.'
             'test_gives_the_same_bytes_in_another_folder_and_from_another_copy'),
]
