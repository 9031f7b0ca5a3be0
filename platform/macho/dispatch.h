// Sending messages from code of an image: entry points in assembly, for each processor, and what they call.
#pragma once

#include <cstdint>

extern "C" {

void machoMsgSend();
void machoMsgSendStret();
void machoMsgSendSuper2();

struct machoMethod {
    void *function;
    /// How to extend the function's result for a caller on arm64, which trusts that it fills 32 bits: by how
    /// many bits to shift it up and down again, with the highest bit set if it has no sign. 0 for results
    /// that stay as they are.
    uint64_t extension;
};
/// The method that a message to a receiver other than nil runs.
machoMethod machoLookUp(void *receiver, void *selector);
struct machoSuper {
    void *receiver;
    void *type;
};
/// The method that a message to the superclass of `type` runs.
machoMethod machoLookUpSuper(const machoSuper *super, void *selector);
}
