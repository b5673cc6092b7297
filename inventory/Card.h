#pragma once

#include "inventory/Micro.h"

#include <QList>
#include <QString>

/// One card of the chassis with its micros.
class Card
{
public:
    /// Builds a card with one micro from an entry of the card list, fields separated by single blanks:
    /// six or more are address, kind, version, model, serial number and a third text; five are the same without the
    /// third text, where an address "DEMOD1" to "DEMOD3" makes the kind "DEMOD"; three are address, model and version
    /// of a programmable device of that model. Any other number of fields gives an invalid card.
    explicit Card(const QString &entry);

    [[nodiscard]] bool isValid() const { return !m_micros.isEmpty(); }
    [[nodiscard]] const QString &model() const { return m_model; }
    [[nodiscard]] const QList<Micro> &micros() const { return m_micros; }

    [[nodiscard]] const QString &serialNumber() const { return m_serialNumber; }
    [[nodiscard]] bool namesModelOnly() const { return m_namesModelOnly; }

    /// Takes the micros of a further entry of the same card, and its texts if this one names only a model.
    void join(const Card &entry);
    void AddMicro(const Micro &micro) { m_micros.append(micro); }
    void AddMicro(const Micro &micro, int position) { m_micros.insert(position, micro); }

    /// The three texts, each followed by ";", and the info string of each micro.
    [[nodiscard]] QString GetFormattedCardInfoString() const;

private:
    void setTexts(const QString &model, const QString &serialNumber, const QString &thirdText);

    QString m_model;
    QString m_serialNumber;
    QString m_thirdText;
    QList<Micro> m_micros;
    bool m_namesModelOnly = false;
};
