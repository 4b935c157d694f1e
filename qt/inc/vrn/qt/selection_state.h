#pragma once

namespace vrn::qt {

/// What a control has learned of a selection; MultiEditControlBase tells what each
/// state means. The steps from one to the next are those of every control.
class SelectionState
{
public:
    bool isFresh() const { return m_state == Fresh; }
    bool varies() const { return m_state == Varies; }

    void reset() { m_state = Fresh; }
    void setVaries() { m_state = Varies; }
    /// The first value has been read.
    void setRead()
    {
        if (m_state == Fresh)
            m_state = Common;
    }
    /// A value was set or entered. A fresh control stays fresh: the next value that
    /// is read is its first.
    void setCommon()
    {
        if (m_state == Varies)
            m_state = Common;
    }

private:
    enum State
    {
        Fresh,
        Common,
        Varies
    };

    State m_state = Fresh;
};

} // namespace vrn::qt
