#pragma once

#include <string>

namespace scorvane {

enum class Buttons { Ok, OkCancel, YesNo, RetryCancel };
enum class Icon { None, Information, Question, Warning, Critical };
enum class Answer { Ok, Cancel, Yes, No, Retry };

// One message box: its text and title exactly as the user sees them. Texts are UTF-8 here;
// only file contents are Windows-1252.
struct Message {
    std::string text;
    std::string title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    Answer defaultAnswer = Answer::Ok;

    bool operator==(const Message&) const = default;
};

// How the program's logic asks the user something. The widgets implement it with real message
// boxes; tests implement it with a scripted fake that records every message.
class Prompter {
public:
    virtual ~Prompter() = default;
    virtual Answer ask(const Message& message) = 0;
    // Called when an error handler decides that the program ends. The real program quits;
    // logic must not rely on this call returning and must stop what it was doing if it does.
    virtual void endProgram(int exitCode) = 0;
};

} // namespace scorvane
