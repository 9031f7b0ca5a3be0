// Texts made of pieces.
#include "check/text.h"

NSString *Text(std::initializer_list<id> pieces)
{
    NSMutableString *const text = [NSMutableString string];
    for (const id piece : pieces)
        [text appendString:piece == nil ? @"nil" : [piece description]];
    return text;
}

NSString *Quoted(NSString *text)
{
    constexpr NSUInteger kLongest = 40;
    if (text == nil)
        return @"nil";
    const unichar nul = 0;
    NSString *const shown = [text stringByReplacingOccurrencesOfString:[NSString stringWithCharacters:&nul
                                                                                               length:1]
                                                            withString:@"\\0"];
    return [shown length] <= kLongest ? Text({@"\"", shown, @"\""})
                                      : Text({@"\"", [shown substringToIndex:kLongest], @"…\""});
}

NSString *YesOrNo(bool value)
{
    return value ? @"yes" : @"no";
}

NSString *WithoutHome(NSString *text)
{
    NSString *const home = NSHomeDirectory();
    return [home length] > 1 ? [text stringByReplacingOccurrencesOfString:home withString:@"~"] : text;
}

NSString *ExceptionText(NSException *exception)
{
    return Text({[exception name], @": ", [exception reason]});
}
