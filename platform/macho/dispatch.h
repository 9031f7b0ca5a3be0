// Sending messages from code of an image: entry points in assembly (dispatch.S), and what they call.
#pragma once

extern "C" {

void machoMsgSend();
void machoMsgSendStret();
void machoMsgSendSuper2();

/// The method that a message to a receiver, which is not nil, runs.
void *machoLookUp(void *receiver, void *selector);
/// The method that a message to the superclass runs.
struct machoSuper {
    void *receiver;
    void *type;
};
void *machoLookUpSuper(const machoSuper *super, void *selector);
}
