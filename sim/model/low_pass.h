// Low passes of the loops, made for the model's step.
#pragma once

namespace servo::sim {

// First order. A corner of 0 passes everything.
class LowPass {
  public:
    void configure(double corner_hz);
    double step(double in) { return out_ += share_ * (in - out_); }
    void set(double value) { out_ = value; }
    double out() const { return out_; }

  private:
    double share_ = 1.0;
    double out_ = 0.0;
};

// Second order, damping 0.7071. A corner of 0 passes everything.
class LowPass2 {
  public:
    void configure(double corner_hz);
    double step(double in);
    void set(double value);
    double out() const { return out1_; }

  private:
    bool open_ = true;
    double b0_ = 1.0;
    double b1_ = 0.0;
    double b2_ = 0.0;
    double a1_ = 0.0;
    double a2_ = 0.0;
    double in1_ = 0.0;
    double in2_ = 0.0;
    double out1_ = 0.0;
    double out2_ = 0.0;
};

}  // namespace servo::sim
