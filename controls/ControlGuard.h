#pragma once

/// Distinguishes changes by the operator from changes that the program makes to show a value.
///
/// Code that writes controls holds a Scope; handlers send nothing meanwhile. Scopes are counted, so a nested scope does
/// not lift the guard half-way through a refill.
class ControlGuard
{
public:
    class Scope
    {
    public:
        explicit Scope(ControlGuard &guard) : m_guard(guard) { ++m_guard.m_depth; }
        ~Scope() { --m_guard.m_depth; }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        ControlGuard &m_guard;
    };

    /// Whether a changed control was changed by the operator.
    [[nodiscard]] bool AcceptControlChanges() const { return m_depth == 0; }

private:
    int m_depth = 0;
};
