module serializer #(parameter WIDTH = 8) (
    input clk,
    input load,
    input [WIDTH-1:0] data,
    output line);
  reg [WIDTH-1:0] shift;
  assign line = shift[0];
  always @(posedge clk) shift <= load ? data : {1'b1, shift[WIDTH-1:1]};
endmodule
