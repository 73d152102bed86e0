#pragma once

#include "storage/Prompter.h"

#include <deque>
#include <vector>

namespace scorvane::testing {

// A scripted stand-in for the message boxes: records every message and answers from a queue
// (the message's default answer once the queue is empty).
class FakePrompter : public Prompter {
public:
    std::vector<Message> shown;
    std::deque<Answer> answers;
    int endCalls = 0;
    int lastExitCode = 0;

    Answer ask(const Message& message) override {
        shown.push_back(message);
        if (answers.empty())
            return message.defaultAnswer;
        Answer a = answers.front();
        answers.pop_front();
        return a;
    }
    void endProgram(int exitCode) override {
        ++endCalls;
        lastExitCode = exitCode;
    }
};

} // namespace scorvane::testing
