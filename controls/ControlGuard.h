#pragma once

/// Tells operator changes from changes that the program makes itself to show a value.
///
/// Whoever writes controls holds a Scope meanwhile; handlers send nothing while one is held. Scopes count, so neither a
/// nested one nor a handler that runs in between can lift the guard half-way through a refill.
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
