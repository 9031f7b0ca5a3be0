// Text encodings by Core Foundation's numbers.
#include "platform/gnustep/codecs.h"

#include <algorithm>
#include <mutex>

#include "platform/gnustep/icu_codec.h"
#include "platform/gnustep/non_lossy_codec.h"
#include "platform/gnustep/unicode_codecs.h"

namespace cocoaport {

namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);
constexpr ByteOrder kBigEndian = ByteOrder::Swapped;
constexpr ByteOrder kLittleEndian = ByteOrder::Host;

struct NamedEncoding {
    CFStringEncoding encoding;
    const char *icuName;
};

/// One byte a character, ASCII below 0x80.
constexpr NamedEncoding kByteEncodings[] = {
    {0x0000, "macos-0_2-10.2"}, // Mac Roman
    {0x0006, "macos-6_2-10.4"}, // Mac Greek
    {0x0007, "macos-7_3-10.2"}, // Mac Cyrillic
    {0x001D, "macos-29-10.2"},  // Mac Central European
    {0x0023, "macos-35-10.2"},  // Mac Turkish
    {0x0098, "macos-7_3-10.2"}, // Mac Ukrainian
    {0x0201, "iso-8859-1"},     {0x0202, "iso-8859-2"},   {0x0203, "iso-8859-3"},   {0x0204, "iso-8859-4"},
    {0x0205, "iso-8859-5"},     {0x0206, "iso-8859-6"},   {0x0207, "iso-8859-7"},   {0x0208, "iso-8859-8"},
    {0x0209, "iso-8859-9"},     {0x020A, "iso-8859-10"},  {0x020B, "iso-8859-11"},  {0x020D, "iso-8859-13"},
    {0x020E, "iso-8859-14"},    {0x020F, "iso-8859-15"},  {0x0400, "cp437"},        {0x0405, "cp737"},
    {0x0406, "cp775"},          {0x0410, "cp850"},        {0x0411, "cp851"},        {0x0412, "cp852"},
    {0x0413, "cp855"},          {0x0414, "cp857"},        {0x0415, "cp860"},        {0x0416, "cp861"},
    {0x0417, "cp862"},          {0x0418, "cp863"},        {0x0419, "cp864"},        {0x041A, "cp865"},
    {0x041B, "cp866"},          {0x041C, "cp869"},        {0x041D, "windows-874"},  {0x0500, "windows-1252"},
    {0x0501, "windows-1250"},   {0x0502, "windows-1251"}, {0x0503, "windows-1253"}, {0x0504, "windows-1254"},
    {0x0505, "windows-1255"},   {0x0506, "windows-1256"}, {0x0507, "windows-1257"}, {0x0508, "windows-1258"},
    {0x0A02, "koi8-r"},         {0x0A08, "koi8-u"},
};

/// Several bytes a character, shift sequences, or not based on ASCII.
constexpr NamedEncoding kOtherEncodings[] = {
    {0x0421, "windows-936"},
    {0x0422, "windows-949"},
    {0x0423, "windows-950"},
    {0x0631, "gbk"},
    {0x0632, "gb18030"},
    {0x0820, "iso-2022-jp"},
    {0x0821, "iso-2022-jp-2"},
    {0x0822, "iso-2022-jp-1"},
    {0x0830, "iso-2022-cn"},
    {0x0831, "iso-2022-cn-ext"},
    {0x0840, "ISO_2022,locale=ko,version=1"},
    {0x0920, "euc-jp"},
    {0x0930, "euc-cn"},
    {0x0931, "euc-tw"},
    {0x0940, "euc-kr"},
    {0x0A03, "big5"},
    {0x0A05, "hz-gb-2312"},
    {0x0A06, "big5-hkscs"},
    {0x0A10, "imap-mailbox-name"},
    {0x0C02, "ibm-037"},
    {0x04000100, "utf-7"},
};

/// As above, with ICU's control characters in other places.
constexpr NamedEncoding kRotatedEncodings[] = {
    {0x0420, "windows-932"},
    {0x0A01, "shift_jis"},
};

struct Correction {
    CFStringEncoding encoding;
    UInt8 byte;
    char16_t character;
};

/// Where the vendor's code page and ICU's differ.
constexpr Correction kCorrections[] = {
    {0x0400, 0xE6, 0x00B5}, // micro sign, not Greek mu, in all of them
    {0x0415, 0xE6, 0x00B5},       {0x0416, 0xE6, 0x00B5}, {0x0417, 0xE6, 0x00B5},
    {0x0418, 0xE6, 0x00B5},       {0x041A, 0xE6, 0x00B5}, {0x0412, 0xAA, 0x00AC}, // not sign
    {0x0419, 0x9F, kNoCharacter},                                                 // unassigned
    {0x0419, 0xD7, 0xFEC1},                                                       // Arabic presentation forms
    {0x0419, 0xD8, 0xFEC5},       {0x0419, 0xF1, 0x0651},
};

/// The encoding's row if this ICU has its converter; null otherwise.
template <size_t Size>
const NamedEncoding *FindRow(const NamedEncoding (&rows)[Size], CFStringEncoding encoding)
{
    const auto *const row =
        std::find_if(std::begin(rows), std::end(rows),
                     [=](const NamedEncoding &candidate) { return candidate.encoding == encoding; });
    return row != std::end(rows) && ICUHasConverter(row->icuName) ? row : nullptr;
}

std::unique_ptr<const TextCodec> NewByteCodec(CFStringEncoding encoding, const char *icuName)
{
    HighHalf characters;
    ReadHighHalf(icuName, characters);
    for (const Correction &correction : kCorrections)
        if (correction.encoding == encoding)
            characters[correction.byte - 0x80] = correction.character;
    return std::make_unique<ByteCodec>(characters);
}

/// A codec of a code page; null when there is none.
std::unique_ptr<const TextCodec> NewCodePageCodec(CFStringEncoding encoding)
{
    if (const NamedEncoding *const row = FindRow(kByteEncodings, encoding))
        return NewByteCodec(encoding, row->icuName);
    if (const NamedEncoding *const row = FindRow(kOtherEncodings, encoding))
        return std::make_unique<ICUCodec>(row->icuName, Controls::InPlace);
    if (const NamedEncoding *const row = FindRow(kRotatedEncodings, encoding))
        return std::make_unique<ICUCodec>(row->icuName, Controls::Rotated);
    return nullptr;
}

/// The codec of a code page, made once; null when there is none.
const TextCodec *FindCodePageCodec(CFStringEncoding encoding)
{
    static std::mutex mutex;
    static auto *const codecs = new std::unordered_map<CFStringEncoding, std::unique_ptr<const TextCodec>>;

    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = codecs->find(encoding);
    if (known != codecs->end())
        return known->second.get();
    std::unique_ptr<const TextCodec> codec = NewCodePageCodec(encoding);
    if (codec == nullptr)
        return nullptr;
    return codecs->emplace(encoding, std::move(codec)).first->second.get();
}

} // namespace

const TextCodec *FindCodec(CFStringEncoding encoding)
{
    static const auto *const utf8 = new UTF8Codec;
    static const auto *const utf16BE = new UTF16Codec(kBigEndian);
    static const auto *const utf16LE = new UTF16Codec(kLittleEndian);
    static const auto *const utf32BE = new UTF32Codec(kBigEndian);
    static const auto *const utf32LE = new UTF32Codec(kLittleEndian);
    static const auto *const ascii = new ASCIICodec;
    static const auto *const nonLossyASCII = new NonLossyASCIICodec;
    static const auto *const nextStepLatin = new ByteCodec(kNextStepLatin);

    switch (encoding) {
    case kCFStringEncodingUTF8:
        return utf8;
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF16LE:
        return utf16LE;
    case kCFStringEncodingUTF16BE:
        return utf16BE;
    case kCFStringEncodingUTF32:
    case kCFStringEncodingUTF32LE:
        return utf32LE;
    case kCFStringEncodingUTF32BE:
        return utf32BE;
    case kCFStringEncodingASCII:
        return ascii;
    case kCFStringEncodingNonLossyASCII:
        return nonLossyASCII;
    case kCFStringEncodingNextStepLatin:
        return nextStepLatin;
    default:
        return FindCodePageCodec(encoding);
    }
}

} // namespace cocoaport
