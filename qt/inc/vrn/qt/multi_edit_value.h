#pragma once

#include <vrn/qt/multi_edit_control_base.h>

namespace vrn::qt {

/// The common value of a selection, without a widget.
///
///     MultiEditValue span(&vrn::any_differ<vrn::units::IConverter::quantity>);
///     for (const Beam& beam : selection)
///         span.readValue(beam.span);
class VRN_QT2_EXPORT MultiEditValue : public MultiEditControlBase
{
public:
    /// `differ` tells whether two values differ, as vrn::any_differ<double> does. It is
    /// called with the value read and the stored one, and must only compare them. A
    /// missing function is reported, and any two values then differ.
    explicit MultiEditValue(bool (*differ)(const boost::any&, const boost::any&));
    virtual ~MultiEditValue();

    void reset() override;
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_varies; }
    boost::any getCurrentValue() const override;
    void setValue(const boost::any& value) override;
    void forceVaries() override;

private:
    bool m_fresh = true;
    bool m_varies = false;
    boost::any m_value;
    bool (*m_differ)(const boost::any&, const boost::any&);
};

} // namespace vrn::qt
