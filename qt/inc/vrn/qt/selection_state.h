#pragma once

namespace vrn::qt {

/// What a control knows of a selection. MultiEditControlBase says what each state
/// means. All controls go from one state to the next in these steps.
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
