// The application's identifier classes, as the generated nq_command_id.h
// declares them and nq_command_id.cxx defines them: a number each. The
// constexpr constructors make the generated ID objects constant-initialized,
// so they are usable even from other static initializers.
#pragma once

class NQ_ID {
public:
    constexpr explicit NQ_ID(int number) : number_(number) {}
    constexpr int number() const { return number_; }

private:
    int number_;
};

class NQ_KeywordID : public NQ_ID {
public:
    using NQ_ID::NQ_ID;
};

class NQ_IntOptionID : public NQ_ID {
public:
    using NQ_ID::NQ_ID;
};

class NQ_BoolOptionID : public NQ_ID {
public:
    using NQ_ID::NQ_ID;
};

class NQ_DoubleOptionID : public NQ_ID {
public:
    using NQ_ID::NQ_ID;
};

class NQ_StringOptionID : public NQ_ID {
public:
    using NQ_ID::NQ_ID;
};
