module dff (input clk, input clear_n, input d, output reg q);
  always @(posedge clk or negedge clear_n)
    if (!clear_n) q <= 1'b0;
    else q <= d;
endmodule
