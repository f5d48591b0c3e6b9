// The alert in which the user describes the machine before the results are mailed.
#pragma once

#include <Alert.h>

class BLooper;
class BTextView;

// Buttons: 0 "Save", 1 "E-mail". The answer "E-mail" posts a message of code 5000 with the string
// field "config" to the target, before the alert ends as any other.
class TarvexAlert : public BAlert {
public:
    explicit TarvexAlert(BLooper* target);

    void MessageReceived(BMessage* message) override;
    // What the user has typed, valid until the next change. The alert must be locked.
    const char* Configuration();

private:
    void AddConfiguration();

    BTextView* configuration = nullptr;
    BLooper* target;
};
