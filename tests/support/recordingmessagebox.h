#pragma once
// A window side for message boxes that records what it was asked and answers as told.

#include "frame/messagebox.h"

#include <QString>

#include <vector>

namespace fxtest {

struct ShownBox
{
    QString text;
    quint32 flags;
    QString title;
};

/// Installed for its lifetime; records each box and answers with `answer`.
class RecordingMessageBox : public fx::IMessageBoxUi
{
public:
    explicit RecordingMessageBox(int answer = fx::IdOk) : m_answer(answer) { fx::SetMessageBoxUi(this); }
    ~RecordingMessageBox() override { fx::SetMessageBoxUi(nullptr); }

    int ShowBox(const QString &text, quint32 flags, const QString &title, void *) override
    {
        boxes.push_back({text, flags, title});
        return m_answer;
    }

    std::vector<ShownBox> boxes;

private:
    int m_answer;
};

} // namespace fxtest
