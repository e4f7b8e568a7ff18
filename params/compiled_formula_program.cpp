#include "params/compiled_formula_program.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "params/compiled_formula_symbols.h"

namespace servo::params {

namespace {

// An operation whose result has to be looked at ends a pass, so it is none of its steps.
bool can_be_step(const Node& node) {
    return node.kind == NodeKind::kCombine && !node.checked && node.op != '^';
}

// x / 2^n and x * 2^-n are the same number, rounded alike, and the product is several times faster.
// Other divisors stay divisors.
void fill_step(Steps& steps, std::size_t place, const Node& node) {
    const double constant = node.right.is_known() ? node.right.constant : node.left.constant;
    steps.kinds[place] = node.op == '*'   ? StepKind::kMultiply
                         : node.op == '/' ? StepKind::kDivide
                                          : StepKind::kAdd;
    steps.constants[place] = constant;
    int exponent = 0;
    const bool is_power_of_two = std::fabs(std::frexp(constant, &exponent)) == 0.5;
    if (node.op == '/' && is_power_of_two && std::abs(exponent) < 1000) {
        steps.kinds[place] = StepKind::kMultiply;
        steps.constants[place] = 1 / constant;
    }
}

// Times one and divided by one.
bool changes_nothing(const Node& node) {
    return (node.op == '*' || node.op == '/') && node.right.is_known() && node.right.constant == 1;
}

// Turns operations into instructions, each working in place on a buffer that nobody else needs any
// more.
class Lowering {
  public:
    explicit Lowering(const SymbolicExpression& symbolic)
        : nodes_(symbolic.nodes), uses_(nodes_.size(), 0), buffer_of_(nodes_.size(), kNone) {
        for (const Node& node : nodes_) {
            count_use(node.left);
            count_use(node.right);
        }
        count_use(symbolic.result);
    }

    Program run(const Symbol& result) {
        program_.result = take(result.node);
        program_.end = WalkEnd::kValue;
        return std::move(program_);
    }

  private:
    static constexpr int kNone = -1;

    void count_use(const Symbol& symbol) {
        if (!symbol.is_known()) ++uses_[index(symbol.node)];
    }

    static std::size_t index(int node) { return static_cast<std::size_t>(node); }

    // The operand of a step that is not known; no value when the node is no step with a constant.
    std::optional<int> base_of_step(int node) const {
        const Node& step = nodes_[index(node)];
        if (!can_be_step(step)) return std::nullopt;
        if (step.right.is_known()) return step.left.node;
        // A sum and a product are the same bits from either side; a quotient is not.
        if (step.left.is_known() && step.op != '/') return step.right.node;
        return std::nullopt;
    }

    // A buffer with the value of the node, for the caller alone.
    std::uint8_t take(int node) {
        if (node == 0) {
            --uses_[0];
            const std::uint8_t target = allocate();
            emit(Operation::kLoad, target);
            return target;
        }
        int& buffer = buffer_of_[index(node)];
        if (buffer == kNone) buffer = compute(node);
        const auto held = static_cast<std::uint8_t>(buffer);
        if (--uses_[index(node)] == 0) return held;
        const std::uint8_t copy = allocate();
        emit(Operation::kCopy, copy).source = held;
        return copy;
    }

    std::uint8_t compute(int node) {
        if (base_of_step(node)) return compute_steps(node);
        const Node& wanted = nodes_[index(node)];
        switch (wanted.kind) {
            case NodeKind::kSample:
                break;  // taken above
            case NodeKind::kCombine:
                return compute_combination(wanted);
            case NodeKind::kFunction: {
                const std::uint8_t target = take(wanted.left.node);
                Instruction& call = emit(Operation::kFunction, target);
                call.function = wanted.function;
                call.checked = true;
                return target;
            }
            case NodeKind::kLogarithm: {
                const std::uint8_t target = take(wanted.left.node);
                Instruction& call = emit(Operation::kLogarithm, target);
                call.logarithm = wanted.logarithm;
                call.checked = true;
                return target;
            }
        }
        return 0;
    }

    std::uint8_t compute_combination(const Node& node) {
        if (node.right.is_known()) return with_constant_behind(node);
        if (node.left.is_known()) {
            const std::uint8_t target = take(node.right.node);
            if (node.op == '*' || node.op == '+') {
                emit_step(node, target);
            } else {
                Instruction& combine = emit(Operation::kFromLeft, target);
                combine.op = node.op;
                combine.constant = node.left.constant;
                combine.checked = node.checked;
            }
            return target;
        }
        const std::uint8_t target = take(node.left.node);
        const std::uint8_t source = take(node.right.node);
        Instruction& combine = emit(Operation::kWith, target);
        combine.source = source;
        combine.op = node.op;
        combine.checked = node.checked;
        free_.push_back(source);
        return target;
    }

    std::uint8_t with_constant_behind(const Node& node) {
        const std::uint8_t target = take(node.left.node);
        if (node.op == '^') {
            Instruction& power = emit(Operation::kPower, target);
            power.constant = node.right.constant;
            power.checked = node.checked;
        } else {
            emit_step(node, target);
        }
        return target;
    }

    // A single step whose result has to be looked at.
    void emit_step(const Node& node, std::uint8_t target) {
        Instruction& single = emit(Operation::kSteps, target);
        fill_step(single.steps, 0, node);
        single.checked = node.checked;
    }

    // As many steps as lead here with nobody else using what lies between, in their written order.
    std::uint8_t compute_steps(int last) {
        std::vector<int> chain;
        int node = last;
        for (auto base = base_of_step(node); base; base = base_of_step(node)) {
            if (node != last && (uses_[index(node)] > 1 || buffer_of_[index(node)] != kNone)) break;
            if (!changes_nothing(nodes_[index(node)])) chain.push_back(node);
            node = *base;
        }
        std::reverse(chain.begin(), chain.end());
        const std::uint8_t target = take(node);
        std::size_t done = 0;
        // The first steps go with the loading of the samples.
        if (node == 0) done = fill(program_.instructions.back(), chain, done);
        while (done < chain.size())
            done = fill(emit(Operation::kSteps, target), chain, done);
        return target;
    }

    std::size_t fill(Instruction& instruction, const std::vector<int>& chain, std::size_t done) {
        for (std::size_t i = 0; i < Steps::kMost && done < chain.size(); ++i, ++done) {
            fill_step(instruction.steps, i, nodes_[index(chain[done])]);
        }
        return done;
    }

    std::uint8_t allocate() {
        if (free_.empty()) return program_.buffers++;
        const std::uint8_t buffer = free_.back();
        free_.pop_back();
        return buffer;
    }

    Instruction& emit(Operation operation, std::uint8_t target) {
        Instruction& instruction = program_.instructions.emplace_back();
        instruction.operation = operation;
        instruction.target = target;
        return instruction;
    }

    const std::vector<Node>& nodes_;
    std::vector<int> uses_;
    std::vector<int> buffer_of_;
    std::vector<std::uint8_t> free_;
    Program program_;
};

Program lower(const SymbolicExpression& symbolic) {
    Program program;
    program.end = symbolic.end;
    if (symbolic.end != WalkEnd::kValue) return program;
    if (symbolic.result.is_known()) {
        program.constant = symbolic.result.constant;
        return program;
    }
    return Lowering(symbolic).run(symbolic.result);
}

template <class Sample>
class Run {
  public:
    Run(const Program& program, std::span<const Sample> samples, double* buffers,
        std::span<double> out)
        : program_(program), samples_(samples), buffers_(buffers), out_(out.data()) {}

    void all() {
        for (const Instruction& instruction : program_.instructions) {
            one(instruction);
            if (instruction.checked) check_block(buffer(instruction.target), count(), failures_);
        }
        if (!program_.has_checks()) return;
        for (std::size_t i = 0; i < count(); ++i) {
            if (failures_[i]) out_[i] = 0;
        }
    }

  private:
    std::size_t count() const { return samples_.size(); }

    double* buffer(std::uint8_t number) const {
        return number == program_.result ? out_ : buffers_ + number * kBlock;
    }

    void one(const Instruction& instruction) {
        double* target = buffer(instruction.target);
        switch (instruction.operation) {
            case Operation::kLoad:
                return load_samples(samples_, target, instruction.steps);
            case Operation::kSteps:
                return run_steps(target, count(), instruction.steps);
            case Operation::kCopy:
                std::copy_n(buffer(instruction.source), count(), target);
                return;
            case Operation::kWith:
                return combine_blocks(target, instruction.op, buffer(instruction.source), count());
            case Operation::kFromLeft:
                return combine_from_left(instruction.constant, instruction.op, target, count());
            case Operation::kPower:
                return raise_to(target, instruction.constant, count());
            case Operation::kFunction:
                return call_function(instruction.function, target, count(), failures_);
            case Operation::kLogarithm:
                return call_logarithm(instruction.logarithm, target, count(), failures_);
        }
    }

    const Program& program_;
    std::span<const Sample> samples_;
    double* buffers_;
    double* out_;
    Failures failures_{};
};

template <class Sample>
void run_block(const Program& program, std::span<const Sample> samples, double* buffers,
               std::span<double> out) {
    if (program.end != WalkEnd::kValue || program.instructions.empty()) {
        std::fill_n(out.begin(), samples.size(), program.constant);
        return;
    }
    Run<Sample>(program, samples, buffers, out).all();
}

}  // namespace

bool Program::has_checks() const {
    return std::any_of(instructions.begin(), instructions.end(),
                       [](const Instruction& instruction) { return instruction.checked; });
}

ProgramPair compile_expression(std::string_view expression, const link::FormulaOperands& operands) {
    return {lower(symbolic_expression(expression, operands, SampleSign::kFromZero)),
            lower(symbolic_expression(expression, operands, SampleSign::kNegative))};
}

void run_program(const Program& program, std::span<const std::int32_t> samples, double* buffers,
                 std::span<double> out) {
    run_block(program, samples, buffers, out);
}

void run_program(const Program& program, std::span<const double> samples, double* buffers,
                 std::span<double> out) {
    run_block(program, samples, buffers, out);
}

}  // namespace servo::params
