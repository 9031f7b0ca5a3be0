// The type IDs of Core Text.
#ifndef QZL_CORETEXT_H
#define QZL_CORETEXT_H

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CTFontGetTypeID(void);
CF_EXPORT CFTypeID CTFontCollectionGetTypeID(void);
CF_EXPORT CFTypeID CTFrameGetTypeID(void);
CF_EXPORT CFTypeID CTFramesetterGetTypeID(void);
CF_EXPORT CFTypeID CTGlyphInfoGetTypeID(void);
CF_EXPORT CFTypeID CTLineGetTypeID(void);
CF_EXPORT CFTypeID CTParagraphStyleGetTypeID(void);
CF_EXPORT CFTypeID CTRunGetTypeID(void);
CF_EXPORT CFTypeID CTRunDelegateGetTypeID(void);
CF_EXPORT CFTypeID CTTypesetterGetTypeID(void);

CF_EXTERN_C_END

#endif
