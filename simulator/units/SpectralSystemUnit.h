#pragma once

#include "simulator/units/Unit.h"

namespace sim {

/// The spectral card as a whole, "U0" on its link.
class SpectralSystemUnit : public Unit
{
    Q_OBJECT

public:
    explicit SpectralSystemUnit(QObject *parent = nullptr);

    /// Whether clients want unprompted status reports. Blocks of spectrum do not ask for this.
    [[nodiscard]] bool isReporting() const { return value("TRON") == "ON"; }
    /// Whether its card list holds `text`.
    [[nodiscard]] bool lists(QByteArrayView text) const { return value("CLST").contains(text); }

protected:
    [[nodiscard]] bool accepts(const SettingRow &row, const QByteArray &value) const override;
};

} // namespace sim
