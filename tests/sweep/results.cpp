// How a step of the swept program ended. In a C++ source, where typed handlers work.
#include <new>

#include "tests/sweep/program.h"

std::string ResultOf(const std::function<std::string()> &body)
{
    try {
        return body();
    } catch (const qzlhost::ProgramException &exception) {
        return kHostException + exception.ClassName() + ": " + exception.Message();
    } catch (const std::bad_alloc &) {
        return kStandardException;
    } catch (int) {
        return kOtherException;
    } catch (const qzlhost::UsageError &) {
        return kNoInstance;
    } catch (const std::exception &exception) {
        return std::string("the test itself: ") + exception.what();
    } catch (...) {
        return kCocoaException;
    }
}
