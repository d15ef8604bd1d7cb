// Ada's adder: one stage of pipeline.
module adder #(parameter WIDTH = 8) (
    input clk,
    input [WIDTH-1:0] a,
    input [WIDTH-1:0] b,
    output reg [WIDTH-1:0] sum);
  always @(posedge clk) sum <= a + b;
endmodule
