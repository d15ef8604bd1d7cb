// For evaluation: stops after an hour.
module pwm #(parameter BITS = 8) (input clk, input [BITS-1:0] level, output reg line);
  reg [BITS-1:0] count = 0;
  always @(posedge clk) begin
    count <= count + 1;
    line <= count < level;
  end
endmodule
