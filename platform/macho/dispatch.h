// Sending messages from code of an image: entry points in assembly, for each processor, and what they call.
#pragma once

extern "C" {

void machoMsgSend();
void machoMsgSendStret();
void machoMsgSendSuper2();

/// The method that a message to a receiver other than nil runs.
void *machoLookUp(void *receiver, void *selector);
struct machoSuper {
    void *receiver;
    void *type;
};
/// The method that a message to the superclass of `type` runs.
void *machoLookUpSuper(const machoSuper *super, void *selector);
}
