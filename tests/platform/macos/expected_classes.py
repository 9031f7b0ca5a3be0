"""The host classes as their records must describe them."""
from collections import namedtuple

# `functions` is 2 for a computed property, which has a getter and a setter.
Method = namedtuple('Method', 'declaration functions', defaults=[1])
# The host reads and writes a `field` itself; the others have a getter alone.
Property = namedtuple('Property', 'name type field', defaults=[False])
HostClass = namedtuple(
    'HostClass', 'name super_name data_size hooks properties methods events constants shared_methods',
    defaults=[[], [], [], [], []])

HANDLE = Property('Handle', 'Integer', field=True)

CLASSES = [
    HostClass(
        'NSNotificationObserverQZL', super_name=None, data_size=8, hooks=True,
        properties=[HANDLE],
        methods=[
            Method('Constructor'),
            Method('Destructor'),
        ],
        events=['GotNotification(notification as NSNotificationQZL)']),
    HostClass(
        'NSNotificationQZL', super_name=None, data_size=8, hooks=True,
        properties=[
            HANDLE,
            Property('userInfo', 'Dictionary'),
            Property('Name', 'String'),
            Property('Description', 'String'),
            Property('objectHandle', 'Integer'),
            Property('objectVariant', 'Variant'),
        ],
        methods=[
            Method('_exception as NSExceptionQZL'),
            Method('Print'),
            Method('Constructor(handle as integer)'),
            Method('Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)'),
        ],
        shared_methods=[
            Method('notificationWithName(name as string, theObject as variant = nil, '
                   'userInfo as dictionary = nil) as NSNotificationQZL'),
        ]),
    HostClass(
        'NSDistributedNotificationCenterQZL', super_name='NSNotificationCenterQZL', data_size=0, hooks=False,
        methods=[
            Method('postNotificationName(name as string, theObject as string, userInfo as dictionary, '
                   'options as UInt32)'),
            Method('postNotificationName(name as string, theObject as string, userInfo as dictionary, '
                   'deliverImmediately as boolean)'),
            Method('Constructor'),
            Method('suspended as boolean', functions=2),
            Method('addObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant, '
                   'suspensionBehavior as integer)'),
        ],
        constants=[
            'NSNotificationSuspensionBehaviorDrop = 1',
            'NSNotificationSuspensionBehaviorCoalesce = 2',
            'NSNotificationSuspensionBehaviorHold = 3',
            'NSNotificationSuspensionBehaviorDeliverImmediately = 4',
            'NSNotificationDeliverImmediately = 1',
            'NSNotificationPostToAllSessions = 2',
        ],
        shared_methods=[
            Method('NSLocalNotificationCenterType as string'),
            Method('defaultCenter as NSDistributedNotificationCenterQZL'),
            Method('notificationCenterForType(name as string) as NSDistributedNotificationCenterQZL'),
        ]),
    HostClass(
        'NSNotificationCenterQZL', super_name=None, data_size=8, hooks=True,
        properties=[HANDLE],
        methods=[
            Method('postNotificationName(name as string)'),
            Method('postNotificationName(name as string, theObject as variant)'),
            Method('postNotificationName(name as string, theObject as variant, userInfo as dictionary)'),
            Method('Constructor'),
            Method('postNotification(notification as NSNotificationQZL)'),
            Method('removeObserver(observer as NSNotificationObserverQZL)'),
            Method('removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)'),
            Method('addObserver(observer as NSNotificationObserverQZL, name as string="", theObject as variant=nil)'),
        ],
        shared_methods=[Method('defaultCenter as NSNotificationCenterQZL')]),
    HostClass(
        'DRNotificationCenterQZL', super_name=None, data_size=8, hooks=True,
        methods=[
            Method('removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)'),
            Method('addObserver(observer as NSNotificationObserverQZL, name as string="", theObject as variant=nil)'),
            Method('Constructor'),
        ]),
]
