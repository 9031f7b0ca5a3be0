# The library itself: one set of sources for every platform.

set(library_sources
  frame/cocoa_exceptions.mm
  frame/errors.cpp
  frame/host_entry_points.cpp
  frame/host_references.cpp
  frame/host_strings.cpp
  frame/instance_registry.cpp
  frame/memory_blocks.cpp
  frame/plugin.cpp
  notifications/DRNotificationCenterQZL.mm
  notifications/NSDistributedNotificationCenterQZL.mm
  notifications/NSNotificationCenterQZL.mm
  notifications/NSNotificationObserver.mm
  notifications/NSNotificationObserverQZL.mm
  notifications/NSNotificationQZL.mm
  notifications/members.mm
  notifications/observer_event.mm
  bridge/dictionary_methods.cpp
  bridge/file_names.cpp
  bridge/to_host/array_to_host.mm
  bridge/to_host/conversion_steps.mm
  bridge/to_host/core_foundation_wrappers.cpp
  bridge/to_host/data_to_host.mm
  bridge/to_host/date_to_host.mm
  bridge/to_host/dictionary_to_host.mm
  bridge/to_host/file_url_to_host.mm
  bridge/to_host/number_to_host.mm
  bridge/to_host/object_to_variant.mm
  bridge/to_host/step_conversions.mm
  bridge/to_host/value_to_host.mm
  bridge/to_host/wrappers.mm
  bridge/to_cocoa/array_to_cocoa.mm
  bridge/to_cocoa/date_to_cocoa.mm
  bridge/to_cocoa/dictionary_to_cocoa.mm
  bridge/to_cocoa/folder_item_to_cocoa.mm
  bridge/to_cocoa/object_to_cocoa.mm
  bridge/to_cocoa/string_to_cocoa.mm
  bridge/to_cocoa/variant_to_object.mm
  bridge/to_cocoa/wrapper_classes.cpp)

# Objects on their own, so that tests reach functions that no member of a class calls.
add_library(qzl_objects OBJECT ${library_sources})
target_include_directories(qzl_objects PUBLIC ${PROJECT_SOURCE_DIR})
target_compile_options(qzl_objects PRIVATE
  -fvisibility=hidden
  # The records must be complete in the data section: the host may read them at any time.
  -Wglobal-constructors)
target_link_libraries(qzl_objects PUBLIC qzl_platform PRIVATE qzl_options)

add_library(NotificationsQZL SHARED)
target_link_libraries(NotificationsQZL PRIVATE qzl_objects qzl_options)
qzl_link_for_platform(NotificationsQZL)
