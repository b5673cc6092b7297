#pragma once

#include "simulator/units/Unit.h"

namespace sim {

/// The spectral card as a whole, "U0" on its link.
class SpectralSystemUnit : public Unit
{
    Q_OBJECT

public:
    explicit SpectralSystemUnit(QObject *parent = nullptr);

    /// Whether clients want unsolicited status reports. Spectrum blocks do not depend on it.
    [[nodiscard]] bool isReporting() const { return value("TRON") == "ON"; }
    /// Whether the card list contains `text`.
    [[nodiscard]] bool lists(QByteArrayView text) const { return value("CLST").contains(text); }

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
};

} // namespace sim
