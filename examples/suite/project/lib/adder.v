// The team's adder: saturates instead of wrapping.
module adder #(parameter WIDTH = 8) (
    input [WIDTH-1:0] a,
    input [WIDTH-1:0] b,
    output [WIDTH-1:0] sum,
    output c_out);
  wire [WIDTH:0] full = a + b;
  assign c_out = full[WIDTH];
  assign sum = c_out ? {WIDTH{1'b1}} : full[WIDTH-1:0];
endmodule
