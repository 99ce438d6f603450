// The application's command classes, with exactly the members the generated
// nq_command_init.cxx calls (docs/application-interface.md says what each
// must do). This one records every call as a line of text, so that a test can
// compare what arrived with what was defined; a real interpreter keeps the
// values instead.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "nq_id.h"

class NQ_Option {
public:
    virtual ~NQ_Option() = default;

    // One overload per value type: the literal the generator writes decides
    // which one is called, and the record names it.
    void setDefaultValue(int value);
    void setDefaultValue(double value);
    void setDefaultValue(bool value);
    void setDefaultValue(const char* value);
    void addLookupTableValue(const char* name, int value);
    void makeLookupCaseSensitive();
    void makeReadOnly();

    const std::vector<std::string>& record() const { return record_; }

protected:
    NQ_Option(const char* type, const char* name, const NQ_ID& id);
    void note(const std::string& line) { record_.push_back(line); }

private:
    std::vector<std::string> record_;
};

class NQ_IntOption : public NQ_Option {
public:
    NQ_IntOption(const char* name, const NQ_IntOptionID& id) : NQ_Option("int", name, id) {}
    void setMinimumValue(int value);
    void setMaximumValue(int value);
};

class NQ_DoubleOption : public NQ_Option {
public:
    NQ_DoubleOption(const char* name, const NQ_DoubleOptionID& id) : NQ_Option("double", name, id) {}
    void setMinimumValue(double value);
    void setMaximumValue(double value);
};

class NQ_BoolOption : public NQ_Option {
public:
    NQ_BoolOption(const char* name, const NQ_BoolOptionID& id) : NQ_Option("bool", name, id) {}
};

class NQ_StringOption : public NQ_Option {
public:
    NQ_StringOption(const char* name, const NQ_StringOptionID& id) : NQ_Option("string", name, id) {}
};

class NQ_Keyword {
public:
    NQ_Keyword(const char* name, const NQ_KeywordID& id, const char* summary);

    void addOption(NQ_Option* option) { options_.emplace_back(option); }
    void setOperandsAsModelName() { flag("operands as model name"); }
    void setNumberTokensInModelName(int count) { flag("tokens in model name " + std::to_string(count)); }
    void setNoNewModel() { flag("no new model"); }
    void setAcceptBlankOperands() { flag("accept blank operands"); }
    void setOperandsNeedFormatting() { flag("operands need formatting"); }
    void setOperandsReverseForName() { flag("operands reverse for name"); }
    void setNoDefaults() { flag("no defaults"); }
    void setNoOptions() { flag("no options"); }
    void setPreserveOperands() { flag("preserve operands"); }
    void setDeprecated() { flag("deprecated"); }
    void makeDeleteKeyword() { flag("delete keyword"); }
    void makeRenameKeyword() { flag("rename keyword"); }

    // The keyword line, its options' records, then its flags in call order.
    void dump(std::string& out) const;

private:
    void flag(const std::string& line) { flags_.push_back(line); }

    std::string heading_;
    std::vector<std::unique_ptr<NQ_Option>> options_;
    std::vector<std::string> flags_;
};

class NQ_Command {
public:
    static void initialize();
    // The generator spreads the keywords over at most twenty routines.
    static void initialize1();
    static void initialize2();
    static void initialize3();
    static void initialize4();
    static void initialize5();
    static void initialize6();
    static void initialize7();
    static void initialize8();
    static void initialize9();
    static void initialize10();
    static void initialize11();
    static void initialize12();
    static void initialize13();
    static void initialize14();
    static void initialize15();
    static void initialize16();
    static void initialize17();
    static void initialize18();
    static void initialize19();
    static void initialize20();

    static void addKeyword(NQ_Keyword* keyword);

    // Everything registered so far, one line per recorded fact.
    static std::string dump();
};
