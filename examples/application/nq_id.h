// Stand-in for the application's identifier classes: just a number each, as
// the generated nq_command_id.cxx constructs them.
#pragma once

class NQ_ID {
public:
    explicit NQ_ID(int number) : number_(number) {}
    int number() const { return number_; }

private:
    int number_;
};

class NQ_KeywordID : public NQ_ID {
public:
    explicit NQ_KeywordID(int number) : NQ_ID(number) {}
};

class NQ_IntOptionID : public NQ_ID {
public:
    explicit NQ_IntOptionID(int number) : NQ_ID(number) {}
};

class NQ_BoolOptionID : public NQ_ID {
public:
    explicit NQ_BoolOptionID(int number) : NQ_ID(number) {}
};

class NQ_DoubleOptionID : public NQ_ID {
public:
    explicit NQ_DoubleOptionID(int number) : NQ_ID(number) {}
};

class NQ_StringOptionID : public NQ_ID {
public:
    explicit NQ_StringOptionID(int number) : NQ_ID(number) {}
};
