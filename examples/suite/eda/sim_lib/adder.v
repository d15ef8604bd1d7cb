// Behaves like the shipped adder, with the delays of a slow device.
`timescale 1ns / 10ps
module adder #(parameter WIDTH = 8) (
    input [WIDTH-1:0] a,
    input [WIDTH-1:0] b,
    output [WIDTH-1:0] sum,
    output c_out);
  assign #(2.4) {c_out, sum} = a + b;
endmodule
