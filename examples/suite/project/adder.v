// The project's own adder: carry by hand, to fit the cells of a small device.
module adder #(parameter WIDTH = 8) (
    input [WIDTH-1:0] a,
    input [WIDTH-1:0] b,
    output [WIDTH-1:0] sum,
    output c_out);
  wire [WIDTH:0] c;
  genvar i;
  assign c[0] = 1'b0;
  assign c_out = c[WIDTH];
  generate
    for (i = 0; i < WIDTH; i = i + 1) begin : bits
      carry stage (.a(a[i]), .b(b[i]), .c_in(c[i]), .sum(sum[i]), .c_out(c[i+1]));
    end
  endgenerate
endmodule
